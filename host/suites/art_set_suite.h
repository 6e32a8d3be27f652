/* Ordered sets of art objects. */
#ifndef DW_ART_SET_SUITE_H
#define DW_ART_SET_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWArtSetSuite "DW Art Set Suite"
#define kDWArtSetSuiteVersion 9

typedef struct DWArtSetSuite {
  DWErr (*NewArtSet)(DWArtSetHandle* set);
  /* Sets *set to null. */
  DWErr (*DisposeArtSet)(DWArtSetHandle* set);
  DWErr (*CountArtSet)(DWArtSetHandle set, int32_t* count);
  DWErr (*IndexArtSet)(DWArtSetHandle set, int32_t index, DWArtHandle* art);
  /* Fills the set with the selected art, top-level selected objects in document order. */
  DWErr (*SelectedArtSet)(DWArtSetHandle set);
  DWErr (*AddArtToArtSet)(DWArtSetHandle set, DWArtHandle art);
  DWErr (*RemoveArtFromArtSet)(DWArtSetHandle set, DWArtHandle art);
  /* Replaces old by replacement; a null replacement removes old. */
  DWErr (*ReplaceArtInArtSet)(DWArtSetHandle set, DWArtHandle old, DWArtHandle replacement);
  /* Empties a set. */
  DWErr (*ClearArtSet)(DWArtSetHandle set);
  /* Indexed access that also reaches entries whose art has since left the document. */
  DWErr (*GetArtSetEntry)(DWArtSetHandle set, int32_t index, DWArtHandle* art);
} DWArtSetSuite;
#ifdef __cplusplus
}
#endif
#endif
