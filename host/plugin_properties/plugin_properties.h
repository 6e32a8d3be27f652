/* Where the plug-in property list lives. On Windows it is the resource "PRPL" 16000 (language 1033);
   on Linux the same 154 bytes sit in the ELF section below, so a host reads them before loading
   the library. The bytes come from plprops.py. */
#ifndef DW_PLUGIN_PROPERTIES_H
#define DW_PLUGIN_PROPERTIES_H

#define kDWPluginPropertiesType "PRPL"
#define kDWPluginPropertiesId 16000
#define kDWPluginPropertiesLanguage 1033
#define kDWPluginPropertiesSection ".dw_plprops"
#define kDWPluginPropertiesSize 154

#endif
