/* Rebuilding an art style: parse it, adjust it, create a new style from the result. */
#ifndef DW_ART_STYLE_PARSER_SUITE_H
#define DW_ART_STYLE_PARSER_SUITE_H
#include "../types.h"
#include "../paint.h"
#ifdef __cplusplus
extern "C" {
#endif
#define kDWArtStyleParserSuite "DW Art Style Parser Suite"
#define kDWArtStyleParserSuiteVersion 8

typedef struct DWArtStyleParserSuite {
  DWErr (*NewParser)(DWStyleParser* parser);
  DWErr (*ParseStyle)(DWStyleParser parser, DWArtStyleHandle style);
  /* Makes the parsed style's paint that of the path style. */
  DWErr (*SetFocusPathStyle)(DWStyleParser parser, const DWPathStyle* pathStyle);
  DWErr (*CreateNewStyle)(DWStyleParser parser, DWArtStyleHandle* style);
  DWErr (*DisposeParser)(DWStyleParser parser);
} DWArtStyleParserSuite;
#ifdef __cplusplus
}
#endif
#endif
