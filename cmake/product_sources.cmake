# The plug-in's own sources, floor by floor; the same list makes every binary of the plug-in, on every system.
set(product_sources
  # What the host offers
  hostapi/version.cpp
  hostapi/services.cpp
  hostapi/record_version_9.cpp
  hostapi/string_data.cpp
  hostapi/build_string.cpp
  hostapi/exceptions.mm
  hostapi/held_handles.mm
  hostapi/dictionary_methods.cpp
  # Values and exceptions between the host and Cocoa
  bridge/exceptions/cocoa_exception.mm
  bridge/family/instances.cpp
  bridge/family/cocoa_init.mm
  bridge/strings/cf_string.cpp
  bridge/data/memory_block.mm
  bridge/data/folder_item.mm
  bridge/data/date.mm
  bridge/data/dictionary.mm
  bridge/data/string_array.mm
  bridge/variant/wrapper_objects.mm
  bridge/variant/cf_wrapper.mm
  bridge/variant/value_wrapper.mm
  bridge/variant/number_variant.mm
  bridge/variant/object_to_variant.mm
  bridge/variant/array_to_object.mm
  bridge/variant/host_object.mm
  bridge/variant/variant_to_object.mm
  # The class
  userdefaults/class_tables.cpp
  userdefaults/exceptions.cpp
  userdefaults/lifecycle.mm
  userdefaults/shared_members.mm
  userdefaults/scalar_accessors.mm
  userdefaults/text_accessors.mm
  userdefaults/object_accessors.mm
  userdefaults/array_accessors.mm
  userdefaults/domains.mm
  # The entry function
  plugin/entry.cpp
)

foreach(source IN LISTS product_sources)
  if(NOT EXISTS "${PROJECT_SOURCE_DIR}/${source}")
    message(FATAL_ERROR "cmake/product_sources.cmake names ${source}, which does not exist")
  endif()
endforeach()
list(TRANSFORM product_sources PREPEND "${PROJECT_SOURCE_DIR}/")
