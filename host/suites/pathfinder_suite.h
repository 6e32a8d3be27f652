/* Pathfinder: combining shapes. */
#ifndef DW_PATHFINDER_SUITE_H
#define DW_PATHFINDER_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWPathfinderSuite "DW Pathfinder Suite"
#define kDWPathfinderSuiteVersion 6

typedef struct DWPathfinderRequest {
  double precision;
  int32_t option1;
  int32_t option2;
  double ratio;
  int32_t mode;
  double width1;
  double scale1;
  double width2;
  double scale2;
  double tolerance;
  int32_t option3;
  int32_t option4;
  /* The shapes to unite; null with count 0 means the selected shapes. */
  DWArtHandle* shapes;
  int32_t shapeCount;
} DWPathfinderRequest;

typedef struct DWPathfinderSuite {
  /* Unites the shapes into one path or compound path, which replaces them where they were.
     message is the message of the command that runs, for the host's undo. */
  DWErr (*Unite)(DWPathfinderRequest* request, void* message);
} DWPathfinderSuite;
#ifdef __cplusplus
}
#endif
#endif
