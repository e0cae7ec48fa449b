# The plug-in: product_objects, which tests link to call inner functions, and NSUserDefaults, the file a host loads.

include(cmake/product_sources.cmake)
if(NOT product_sources)
  return()
endif()

add_library(product_objects OBJECT ${product_sources})
set_target_properties(product_objects PROPERTIES
  POSITION_INDEPENDENT_CODE ON
  CXX_VISIBILITY_PRESET hidden
  OBJCXX_VISIBILITY_PRESET hidden
  VISIBILITY_INLINES_HIDDEN ON)

# On a Mac a MODULE would become a bundle, which the oldest hosts cannot load; they want a dynamic library.
if(APPLE)
  add_library(NSUserDefaults SHARED)
else()
  add_library(NSUserDefaults MODULE)
endif()
target_link_libraries(NSUserDefaults PRIVATE product_objects)
set_target_properties(NSUserDefaults PROPERTIES PREFIX "" LINKER_LANGUAGE OBJCXX)

if(APPLE)
  set_target_properties(NSUserDefaults PROPERTIES
    INSTALL_NAME_DIR "@executable_path/../Frameworks" BUILD_WITH_INSTALL_NAME_DIR ON)
  target_link_libraries(NSUserDefaults PRIVATE
    "-framework AppKit" "-framework Foundation" "-framework CoreServices" "-framework ApplicationServices")
  target_link_options(NSUserDefaults PRIVATE "LINKER:-exported_symbol,_REALPluginMain")
else()
  # First in the list of needed libraries: platform_gnustep takes the place of functions that GNUstep's own libraries
  # define, and a loader takes the first definition it meets.
  target_link_libraries(product_objects PUBLIC platform_gnustep gnustep)
  # Objective-C code cannot be unloaded, so a host's dlclose must not take it away (nodelete).
  target_link_options(NSUserDefaults PRIVATE
    "LINKER:-z,nodelete" "LINKER:-z,defs" "LINKER:-z,noexecstack" "LINKER:-z,text"
    "LINKER:--version-script=${PROJECT_SOURCE_DIR}/cmake/product_exports.map")
  set_property(TARGET NSUserDefaults APPEND PROPERTY LINK_DEPENDS "${PROJECT_SOURCE_DIR}/cmake/product_exports.map")
endif()
