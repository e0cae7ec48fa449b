# The plug-in as users load it: 32-bit Intel Mach-O, made on Linux by clang 13 (the last one for the Objective-C runtime
# of 32-bit macOS), headers from the cache and from platform, and the linker in tools/macho.
#
#   macos            build/macos-i386/NSUserDefaults.dylib, at -O2, and NSUserDefaults.map beside it
#   macos-variants   build/macos-i386/<level>/NSUserDefaults.dylib, at O0, O1, O2 and O3

find_program(macos_compiler clang-13 REQUIRED)
execute_process(COMMAND "${macos_compiler}" -print-resource-dir
  OUTPUT_VARIABLE macos_compiler_resources OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)

set(macos_headers_script "${PROJECT_SOURCE_DIR}/tools/setup/macos-headers.sh")
execute_process(COMMAND "${macos_headers_script}" --path
  OUTPUT_VARIABLE macos_headers OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${macos_headers_script}")
# The folder stands for what is in it: it is made in one step and never changed.
add_custom_command(OUTPUT "${macos_headers}"
  COMMAND "${macos_headers_script}"
  COMMENT "Making the folder of macOS headers" USES_TERMINAL)
add_custom_target(macos-headers DEPENDS "${macos_headers}")

# The class is useful from 10.4 on; the linker writes the same into the file, unless it is told otherwise.
set(macos_target i386-apple-macosx10.4)
set(macos_flags
  -target ${macos_target} -std=c++17 -fexceptions -fvisibility=hidden -fvisibility-inlines-hidden
  # 10.4 has no function that a broken stack guard calls.
  -fno-stack-protector
  -Wall -Wextra -Werror
  # File names in messages must not depend on where the checkout is: two builds give the same bytes.
  "-ffile-prefix-map=${PROJECT_SOURCE_DIR}/="
  # libc++ gives templates and traits only. Its compiled parts are not on 10.4, so nothing of it may be imported.
  -D_LIBCPP_ABI_VERSION=1 -D_LIBCPP_ABI_NAMESPACE=__1 -D_LIBCPP_DISABLE_AVAILABILITY -D_LIBCPP_HAS_NO_EXCEPTIONS
  -D_LIBCPP_PSTL_CPU_BACKEND_SERIAL
  -nostdinc -nostdinc++ "-I${PROJECT_SOURCE_DIR}"
  -isystem "${PROJECT_SOURCE_DIR}/platform/macos/include" -isystem "${PROJECT_SOURCE_DIR}/platform/include"
  -isystem "${macos_headers}/libcxx/include" -isystem "${macos_compiler_resources}/include"
  -isystem "${macos_headers}/libc/include/any-macos-any")
set(macos_objc_flags -fobjc-exceptions -fobjc-runtime=macosx-fragile-10.4)

# add_macos_library(OUTPUT OPTIMIZATION <-O2> SOURCES source... [SYMBOLS table] [LINK option...])
#
# A rule that makes the Mach-O dynamic library OUTPUT, and beside it the map of what lies where in it (.map). SYMBOLS
# names what may be imported, the plug-in's own list unless another one is given; LINK has further options of macho_ld.
# What is made on the way stands in a folder beside the build's other objects.
function(add_macos_library output)
  cmake_parse_arguments(PARSE_ARGV 1 library "" "OPTIMIZATION;SYMBOLS" "SOURCES;LINK")
  if(NOT library_SYMBOLS)
    set(library_SYMBOLS "${PROJECT_SOURCE_DIR}/tools/macho/symbols.txt")
  endif()
  file(RELATIVE_PATH name "${PROJECT_SOURCE_DIR}/build" "${output}")
  set(objects_dir "${PROJECT_BINARY_DIR}/macos-objects/${name}")
  set(objects)
  set(object_names) # in that folder, so that the map says the same wherever the checkout is
  foreach(source IN LISTS library_SOURCES)
    cmake_path(ABSOLUTE_PATH source NORMALIZE)
    file(RELATIVE_PATH short "${PROJECT_SOURCE_DIR}" "${source}")
    set(object "${objects_dir}/${short}.o")
    cmake_path(GET object PARENT_PATH object_dir)
    set(flags ${macos_flags} ${library_OPTIMIZATION})
    if(source MATCHES "\\.mm$")
      list(APPEND flags ${macos_objc_flags})
    endif()
    add_custom_command(OUTPUT "${object}"
      COMMAND "${CMAKE_COMMAND}" -E make_directory "${object_dir}"
      COMMAND "${macos_compiler}" ${flags} -MMD -MF "${object}.d" -MT "${object}" -c "${source}" -o "${object}"
      DEPENDS "${source}" "${macos_headers}"
      DEPFILE "${object}.d"
      COMMENT "Compiling ${short} for macOS at ${library_OPTIMIZATION}" VERBATIM)
    list(APPEND objects "${object}")
    list(APPEND object_names "${short}.o")
  endforeach()
  cmake_path(GET output PARENT_PATH output_dir)
  cmake_path(REPLACE_EXTENSION output LAST_ONLY map OUTPUT_VARIABLE map)
  add_custom_command(OUTPUT "${output}" "${map}"
    COMMAND "${CMAKE_COMMAND}" -E make_directory "${output_dir}"
    COMMAND "$<TARGET_FILE:macho_ld>" -o "${output}" -map "${map}" -symbols "${library_SYMBOLS}"
      ${library_LINK} ${object_names}
    WORKING_DIRECTORY "${objects_dir}"
    DEPENDS macho_ld "${library_SYMBOLS}" ${objects}
    COMMENT "Linking ${name}" VERBATIM)
endfunction()

set(macos_dir "${PROJECT_SOURCE_DIR}/build/macos-i386")
if(WATCH)
  set(macos_dir "${PROJECT_BINARY_DIR}/macos-i386") # made by tools that are being watched themselves
endif()

# add_macos_plugin(TARGET OUTPUT OPTIMIZATION [ALL]): a target that makes the plug-in at one level of optimisation and
# looks whether a system could load it; what was looked at stands in OUTPUT.checked, and is printed when it is not right.
function(add_macos_plugin target output optimization)
  # The name by which an application would find the plug-in beside its own program; 10.4 knows no @rpath.
  add_macos_library("${output}" OPTIMIZATION ${optimization} SOURCES ${product_sources}
    LINK -export _REALPluginMain -current_version ${PROJECT_VERSION}
      -install_name @executable_path/../Frameworks/NSUserDefaults.dylib)
  file(RELATIVE_PATH name "${PROJECT_SOURCE_DIR}/build" "${output}")
  set(checked "${output}.checked")
  add_custom_command(OUTPUT "${checked}"
    COMMAND sh -c "\"$@\" >\"$0.new\" || { cat \"$0.new\"; exit 1; }; mv \"$0.new\" \"$0\"" "${checked}"
      "$<TARGET_FILE:check_dylib>" -symbols "${PROJECT_SOURCE_DIR}/tools/macho/symbols.txt" -export _REALPluginMain "${output}"
    DEPENDS "${output}" check_dylib
    COMMENT "Checking ${name}" VERBATIM)
  add_custom_target(${target} ${ARGN} DEPENDS "${checked}")
endfunction()

if(product_sources)
  add_macos_plugin(macos "${macos_dir}/NSUserDefaults.dylib" -O2 ALL)
  add_custom_target(macos-variants)
  foreach(level O0 O1 O2 O3)
    add_macos_plugin(macos-${level} "${macos_dir}/${level}/NSUserDefaults.dylib" -${level})
    add_dependencies(macos-variants macos-${level})
  endforeach()
endif()
