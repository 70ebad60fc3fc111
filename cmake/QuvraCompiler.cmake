# Compiler settings shared by the library, its tests, benchmarks and hosts.
include(GNUInstallDirs)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  set(CMAKE_C_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()

add_library(quvra_warnings INTERFACE)
target_compile_options(quvra_warnings INTERFACE -Wall -Wextra
  $<$<BOOL:${QUVRA_WERROR}>:-Werror>)
# Sources name themselves by their path from the project root in failure
# reports, whatever directory the build runs in.
target_compile_options(quvra_warnings INTERFACE
  -fmacro-prefix-map=${CMAKE_SOURCE_DIR}/=)

if(QUVRA_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all
    -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
# Coverage feedback for libFuzzer in everything; the fuzz targets add the
# fuzzer's own main.
if(QUVRA_BUILD_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
if(QUVRA_TSAN)
  add_compile_options(-fsanitize=thread -fno-omit-frame-pointer)
  add_link_options(-fsanitize=thread)
endif()
