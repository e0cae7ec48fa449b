# The plug-in's own sources, in the order of the layers; the same list makes every binary of the plug-in, on every system.
set(product_sources
)

foreach(source IN LISTS product_sources)
  if(NOT EXISTS "${PROJECT_SOURCE_DIR}/${source}")
    message(FATAL_ERROR "cmake/product_sources.cmake names ${source}, which does not exist")
  endif()
endforeach()
list(TRANSFORM product_sources PREPEND "${PROJECT_SOURCE_DIR}/")
