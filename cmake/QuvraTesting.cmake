# quvra_add_test_suite(<name> <sources>...): one GoogleTest executable per
# subsystem, linked against the static archive so that tests reach internal
# classes, with every test registered in ctest. Tests run in their own build
# folder, where they may write files. Under ThreadSanitizer a report fails
# the test, apart from the suppressed ones of tests/tsan.supp.
find_package(GTest REQUIRED)
include(GoogleTest)

function(quvra_add_test_suite name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE quvra_static quvra_test_support quvra_warnings GTest::gtest GTest::gtest_main)
  target_compile_definitions(${name} PRIVATE
    QUVRA_TEST_DATA_DIR="${CMAKE_SOURCE_DIR}/tests/data")
  gtest_discover_tests(${name}
    WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}
    DISCOVERY_TIMEOUT 60
    PROPERTIES TIMEOUT 600
      ENVIRONMENT "TSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/tsan.supp:halt_on_error=1")
endfunction()
