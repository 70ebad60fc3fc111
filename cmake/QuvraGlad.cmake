# The GL loader and the qvgl forwarders are generated into the build tree at
# build time from the OpenGL registry that Debian's python3-glad ships, so the
# loader always matches the registry that the forwarders were built from.
#
# Defines QUVRA_GLAD_INCLUDE_DIR (glad/gl.h, KHR/khrplatform.h),
# QUVRA_GLAD_SOURCE_DIR (gl.c, which a wrapper of ours includes so that it can
# choose the visibility of each generated symbol), QUVRA_QVGL_SOURCE (the
# forwarders) and the target quvra_glad_generated that produces them all.

find_program(GLAD_EXECUTABLE glad REQUIRED)

# glad is a Python entry script; the interpreter of its first line is the one
# that can import the glad package, whatever python3 comes first on PATH.
file(STRINGS ${GLAD_EXECUTABLE} quvra_glad_shebang LIMIT_COUNT 1)
string(REGEX REPLACE "^#![ ]*([^ ]+).*$" "\\1" QUVRA_GLAD_PYTHON "${quvra_glad_shebang}")
execute_process(
  COMMAND ${QUVRA_GLAD_PYTHON} -c
    "import glad, os; print(os.path.join(os.path.dirname(glad.__file__), 'files', 'gl.xml'))"
  OUTPUT_VARIABLE QUVRA_GL_XML
  OUTPUT_STRIP_TRAILING_WHITESPACE
  RESULT_VARIABLE quvra_glad_rc)
if(NOT quvra_glad_rc EQUAL 0 OR NOT EXISTS "${QUVRA_GL_XML}")
  message(FATAL_ERROR "GLAD's OpenGL registry not found through ${QUVRA_GLAD_PYTHON}; "
    "install python3-glad (scripts/setup.sh)")
endif()

set(quvra_glad_dir ${CMAKE_BINARY_DIR}/generated/glad)
set(QUVRA_GLAD_INCLUDE_DIR ${quvra_glad_dir}/include)
set(QUVRA_GLAD_SOURCE_DIR ${quvra_glad_dir}/src)

# --reproducible keeps glad on the registry it ships instead of fetching the
# latest one from the network.
add_custom_command(
  OUTPUT ${QUVRA_GLAD_SOURCE_DIR}/gl.c ${QUVRA_GLAD_INCLUDE_DIR}/glad/gl.h
         ${QUVRA_GLAD_INCLUDE_DIR}/KHR/khrplatform.h
  COMMAND ${QUVRA_GLAD_PYTHON} -m glad --reproducible --quiet --api gl:compatibility
          --out-path ${quvra_glad_dir} c
  DEPENDS ${QUVRA_GL_XML}
  COMMENT "Generating the GL loader with GLAD"
  VERBATIM)

set(QUVRA_QVGL_SOURCE ${CMAKE_BINARY_DIR}/generated/qvgl/qvgl_forwarders.c)
add_custom_command(
  OUTPUT ${QUVRA_QVGL_SOURCE}
  COMMAND ${QUVRA_GLAD_PYTHON} ${CMAKE_SOURCE_DIR}/tools/gen_qvgl_forwarders.py
          ${QUVRA_GL_XML} ${QUVRA_QVGL_SOURCE}
  DEPENDS ${CMAKE_SOURCE_DIR}/tools/gen_qvgl_forwarders.py ${QUVRA_GL_XML}
  COMMENT "Generating the qvgl forwarders"
  VERBATIM)

add_custom_target(quvra_glad_generated DEPENDS
  ${QUVRA_GLAD_SOURCE_DIR}/gl.c ${QUVRA_GLAD_INCLUDE_DIR}/glad/gl.h ${QUVRA_QVGL_SOURCE})
