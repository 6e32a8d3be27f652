# rasterize_core: the plug-in's rooms as one static library (tests link it directly).
# Rasterize: that library plus PluginMain, as the shared library a host loads.
set(_rooms shell settings engine image_streams commands)
set(RASTERIZE_CORE_SOURCES)
foreach(room ${_rooms})
  file(GLOB _src CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${room}/*.cpp)
  list(APPEND RASTERIZE_CORE_SOURCES ${_src})
endforeach()
list(REMOVE_ITEM RASTERIZE_CORE_SOURCES ${PROJECT_SOURCE_DIR}/shell/PluginMain.cpp)

find_package(Boost 1.74 REQUIRED)

add_library(rasterize_core STATIC ${RASTERIZE_CORE_SOURCES})
target_include_directories(rasterize_core PUBLIC ${PROJECT_SOURCE_DIR})
target_link_libraries(rasterize_core PUBLIC basic_threads dw_platform)
target_include_directories(rasterize_core SYSTEM PUBLIC ${Boost_INCLUDE_DIRS})
set_target_properties(rasterize_core PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
dw_warnings(rasterize_core)

add_library(Rasterize MODULE ${PROJECT_SOURCE_DIR}/shell/PluginMain.cpp)
target_link_libraries(Rasterize PRIVATE rasterize_core)
set_target_properties(Rasterize PROPERTIES PREFIX "" CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
dw_warnings(Rasterize)
if(WIN32)
  target_sources(Rasterize PRIVATE ${PROJECT_SOURCE_DIR}/host/plugin_properties/Rasterize.def
                                   ${PROJECT_SOURCE_DIR}/host/plugin_properties/Rasterize.rc)
else()
  # Only PluginMain leaves the library.
  target_link_options(Rasterize PRIVATE -Wl,--version-script=${PROJECT_SOURCE_DIR}/host/plugin_properties/exports.map)
  # clang links its sanitizer runtimes into the executable only: a sanitized module leaves their
  # symbols for the loading program to provide.
  if(NOT (RASTERIZE_SANITIZE AND CMAKE_CXX_COMPILER_ID MATCHES "Clang"))
    target_link_options(Rasterize PRIVATE -Wl,--no-undefined)
  endif()
endif()
