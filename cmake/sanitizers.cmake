# Builds for runs that watch the plug-in from below. Each has a build tree of its own, made from a preset
# linux-i386-<what is below>:
#
#   sanitize      everything under AddressSanitizer (with LeakSanitizer) and UndefinedBehaviorSanitizer
#   coverage      the plug-in counts which branches the tests take
#   fuzz          the fuzzers of tests/fuzz as fast as they get
#   fuzz-address  the same under both sanitizers
set(WATCH "" CACHE STRING "sanitize, coverage, fuzz or fuzz-address; empty for a plain build")

# -fno-sanitize=function: host and plug-in name the types of their handles differently, so that a call through a table of
# entry points looks like a call of another function's type. -fno-sanitize=alignment: the text of a string on hosts before
# 2012 begins at an odd address and is read from there as UTF-16, which 32-bit Intel, the only place where such hosts
# exist, allows.
set(sanitizer_flags -fsanitize=address,undefined -fno-sanitize=function,alignment -fno-sanitize-recover=all
  -fno-omit-frame-pointer -O1 -gline-tables-only)

if(WATCH STREQUAL "sanitize" OR WATCH STREQUAL "fuzz-address")
  # The runtime is a library of its own, because the plug-in is loaded into programs that know nothing of it.
  add_compile_options(${sanitizer_flags} -shared-libasan)
  add_link_options(${sanitizer_flags} -shared-libasan "LINKER:-rpath,${clang_runtime}/lib/linux")
  cmake_language(DEFER CALL target_sources platform_gnustep PRIVATE "${PROJECT_SOURCE_DIR}/tools/suppressions/lsan.mm")
elseif(WATCH STREQUAL "coverage")
  # A compiler launcher may shorten the paths by which the report finds the sources.
  cmake_language(DEFER CALL set_target_properties product_objects PROPERTIES
    CXX_COMPILER_LAUNCHER "" OBJCXX_COMPILER_LAUNCHER "")
  # -fno-builtin-realloc: the counters let the compiler make realloc(nullptr) a malloc, which the tests that refuse memory
  # do not see.
  cmake_language(DEFER CALL target_compile_options product_objects PRIVATE -fprofile-instr-generate -fcoverage-mapping
    -fno-builtin-realloc)
  cmake_language(DEFER CALL target_link_options product_objects PUBLIC -fprofile-instr-generate)
elseif(WATCH AND NOT WATCH STREQUAL "fuzz")
  message(FATAL_ERROR "WATCH is ${WATCH}; it can be sanitize, coverage, fuzz or fuzz-address")
endif()
