/* Menus. Item texts are localisable strings. */
#ifndef DW_MENU_SUITE_H
#define DW_MENU_SUITE_H
#include "../types.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWMenuSuite "DW Menu Suite"
#define kDWMenuSuiteVersion 11

typedef struct DWMenuItemData {
  const char* groupName;
  const char* itemText;
} DWMenuItemData;

typedef struct DWMenuSuite {
  /* group may be null. */
  DWErr (*AddMenuGroup)(const char* name, uint32_t options, const char* nearGroup, DWMenuGroupHandle* group);
  DWErr (*AddMenuItem)(DWPluginRef plugin, const char* itemName, const DWMenuItemData* data,
                       uint32_t options, DWMenuItemHandle* item);
  /* Enables the item by the host's rule: an action code and six masks. */
  DWErr (*UpdateMenuItemAutomatically)(DWMenuItemHandle item, int32_t action, uint32_t ifObjectIsInArtwork,
                                       uint32_t ifObjectIsNotInArtwork, uint32_t ifObjectIsSelected,
                                       uint32_t ifObjectIsNotSelected, uint32_t ifIsTrue, uint32_t ifIsNotTrue);
} DWMenuSuite;
#ifdef __cplusplus
}
#endif
#endif
