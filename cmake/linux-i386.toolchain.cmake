# 32-bit Intel Linux with GNUstep, from the sysroot that tools/setup makes in the user's cache.

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)

execute_process(
  COMMAND "${CMAKE_CURRENT_LIST_DIR}/../tools/setup/sysroot.sh" --path
  OUTPUT_VARIABLE CMAKE_SYSROOT OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
if(NOT IS_DIRECTORY "${CMAKE_SYSROOT}")
  message(FATAL_ERROR "The 32-bit sysroot has not been made yet: run `make setup` first.")
endif()

foreach(language C CXX OBJCXX ASM)
  set(CMAKE_${language}_COMPILER_TARGET i686-linux-gnu)
endforeach()
find_program(clang clang-14 REQUIRED)
find_program(clangxx clang++-14 REQUIRED)
find_program(lld ld.lld-14 REQUIRED)
set(CMAKE_C_COMPILER "${clang}")
set(CMAKE_ASM_COMPILER "${clang}")
set(CMAKE_CXX_COMPILER "${clangxx}")
set(CMAKE_OBJCXX_COMPILER "${clangxx}")

# The 32-bit sanitizer and fuzzer runtimes are in the sysroot, with their headers; the compiler would look beside itself.
file(GLOB clang_runtime "${CMAKE_SYSROOT}/usr/lib/llvm-14/lib/clang/*")
set(clang_runtime_headers "-isystem ${clang_runtime}/include")

set(CMAKE_C_FLAGS_INIT "${clang_runtime_headers}")
set(CMAKE_CXX_FLAGS_INIT "-fexceptions ${clang_runtime_headers}")
# GCC's runtime calls the class of constant strings what the compiler was told: on GNUstep that is NSConstantString.
set(CMAKE_OBJCXX_FLAGS_INIT
  "-fexceptions -fobjc-exceptions -fobjc-runtime=gcc -fconstant-string-class=NSConstantString \
-D_NATIVE_OBJC_EXCEPTIONS -isystem ${CMAKE_SYSROOT}/usr/include/GNUstep ${clang_runtime_headers}")

# The programs run as they are, with the sysroot's loader and libraries. An RPATH, not a RUNPATH: only the former is
# followed for the libraries that a needed library needs.
set(sysroot_library_dirs
  "${CMAKE_SYSROOT}/usr/lib" "${CMAKE_SYSROOT}/lib/i386-linux-gnu" "${CMAKE_SYSROOT}/usr/lib/i386-linux-gnu")
list(JOIN sysroot_library_dirs ":" sysroot_rpath)
set(link_flags "--ld-path=${lld} -resource-dir ${clang_runtime} -Wl,--disable-new-dtags -Wl,-rpath,${sysroot_rpath}")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "${link_flags}")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "${link_flags}")
set(CMAKE_EXE_LINKER_FLAGS_INIT "${link_flags} -Wl,--dynamic-linker=${CMAKE_SYSROOT}/lib/ld-linux.so.2")

set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
