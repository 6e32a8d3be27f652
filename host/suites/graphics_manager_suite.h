/* The graphics manager: off-screen ports that drawing lands in. */
#ifndef DW_GRAPHICS_MANAGER_SUITE_H
#define DW_GRAPHICS_MANAGER_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWGraphicsManagerSuite "Corvel Graphics Manager Suite"
#define kDWGraphicsManagerSuiteVersion 2000

/* Port option flags. */
enum {
  kDWPortAntialias = 0x200000,   /* anti-aliased coverage instead of aliased */
  kDWPortOutlineText = 0x8,      /* text as outlines */
  kDWPortHintedText = 0x10013    /* hinted type */
};

enum { kDWPortOptionsGet = 0, kDWPortOptionsSet = 1 };
enum { kDWPathObject = 2 };

typedef struct DWGraphicsManagerSuite {
  /* flags is -1 for the defaults. */
  DWErr (*NewPortColorSpace)(DWColorSpaceHandle space, int32_t flags, DWPortColorSpace* portSpace);
  /* A port that draws into caller memory: bounds (0, 0, width, rows), rows rowBytes apart. */
  DWErr (*NewOffscreenPort)(const DWIntRect* bounds, int32_t rowBytes, void* buffer, DWPortColorSpace space,
                            int32_t bitsPerPixel, int32_t options, DWPort* port);
  DWErr (*DisposePort)(DWPort port);
  /* Releases a port colour space or a graphics object. */
  DWErr (*ReleaseObject)(void* object);
  DWErr (*PortOptions)(DWPort port, int32_t direction, uint32_t* flags);
  /* Starts a drawing session; clip is an optional path object, mode 1 composites over the
     buffer's contents, groupBlend non-zero isolates the drawing as one transparency group. */
  DWErr (*BeginDrawing)(DWPort port, const DWIntRect* device, DWGraphicsObject clip, int32_t mode,
                        uint32_t groupBlend);
  DWErr (*NewObject)(int32_t kind, DWGraphicsObject* object);
  DWErr (*MoveTo)(DWGraphicsObject path, float x, float y);
  DWErr (*LineTo)(DWGraphicsObject path, float x, float y);
  DWErr (*ClosePath)(DWGraphicsObject path);
  /* Device set-up of a drawing session, called in this order after BeginDrawing. */
  DWErr (*SaveState)(DWPort port);
  DWErr (*UseDeviceSpace)(DWPort port);
  DWErr (*ClipToObject)(DWPort port, DWGraphicsObject path, int32_t* clipDepth);
  DWErr (*ResetPaint)(DWPort port);
  DWErr (*UseUserSpace)(DWPort port);
} DWGraphicsManagerSuite;
#ifdef __cplusplus
}
#endif
#endif
