/* The art tree: objects, their links, attributes and placement. */
#ifndef DW_ART_SUITE_H
#define DW_ART_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWArtSuite "DW Art Suite"
#define kDWArtSuiteVersion 17

typedef struct DWArtSuite {
  /* Creates art of a kind at a paint order relative to prep (prep is null for 5 and 6). */
  DWErr (*NewArt)(int16_t kind, int16_t paintOrder, DWArtHandle prep, DWArtHandle* art);
  /* Removes the art and everything inside it from the document. */
  DWErr (*DisposeArt)(DWArtHandle art);
  DWErr (*GetArtType)(DWArtHandle art, int16_t* kind);
  /* Null for a layer's top group. */
  DWErr (*GetArtParent)(DWArtHandle art, DWArtHandle* parent);
  DWErr (*GetArtFirstChild)(DWArtHandle art, DWArtHandle* child);
  DWErr (*GetArtSibling)(DWArtHandle art, DWArtHandle* sibling);
  /* Attribute bits (selected, hidden, fully selected) and user flags, under a mask. */
  DWErr (*GetArtUserAttr)(DWArtHandle art, uint32_t mask, uint32_t* attr);
  DWErr (*SetArtUserAttr)(DWArtHandle art, uint32_t mask, uint32_t attr);
  DWErr (*GetLayerOfArt)(DWArtHandle art, DWLayerHandle* layer);
  /* Non-zero for art that belongs to no layer (definitions, edit art of plug-in groups). */
  DWErr (*ArtIsOutsideLayers)(DWArtHandle art, DWBool* outside);
  DWErr (*GetArtValuePair)(DWArtHandle art, double* real, int32_t* integer);
  DWErr (*SetArtValuePair)(DWArtHandle art, double real, int32_t integer);
  DWErr (*GetLayerGroupArt)(DWLayerHandle layer, DWArtHandle* group);
  DWErr (*GetFirstArtOfLayer)(DWLayerHandle layer, DWArtHandle* art);
  DWErr (*GetArtBounds)(DWArtHandle art, DWRealRect* bounds);
  DWErr (*ReorderArt)(DWArtHandle art, int16_t paintOrder, DWArtHandle prep);
  DWErr (*IsArtGraph)(DWArtHandle art, DWBool* graph);
  /* Non-zero for a group that carries an appearance of its own (an art style with effects). */
  DWErr (*ArtHasOwnStyle)(DWArtHandle art, DWBool* styled);
  DWErr (*DuplicateArt)(DWArtHandle art, int16_t paintOrder, DWArtHandle prep, DWArtHandle* copy);
} DWArtSuite;
#ifdef __cplusplus
}
#endif
#endif
