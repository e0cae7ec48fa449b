# compile_quickly(TARGET [header...])
#
# For tools and tests, which are compiled more often than their speed matters: without optimisation, and with the headers
# that most of their files include compiled once. Only C++ files get these; tests have headers for both languages.
#
# A compiler launcher such as ccache finds what it has compiled by the headers' content. A precompiled one has the
# checkout's path in it, so that nothing would be found for another checkout.
if(CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_DISABLE_PRECOMPILE_HEADERS ON)
endif()

set(common_headers
  <algorithm> <fstream> <functional> <map> <memory> <optional> <set> <sstream> <string> <vector>)

function(compile_quickly target)
  do_not_optimise(${target})
  set(headers ${common_headers} ${ARGN})
  list(TRANSFORM headers REPLACE "<(.+)>" "$<$<COMPILE_LANGUAGE:CXX>:<\\1$<ANGLE-R>>")
  target_precompile_headers(${target} PRIVATE ${headers})
endfunction()

# Sanitizers and fuzzers have a level of their own.
function(do_not_optimise target)
  if(NOT WATCH OR WATCH STREQUAL "coverage")
    target_compile_options(${target} PRIVATE -O0)
  endif()
endfunction()
