# add_layer(NAME HEADERS ... SOURCES ... [USES layer...] [LINKS library...])
#
# A layer is one folder and one static library with an include root of its own. It sees the headers of
# the layers that it USES, and theirs, and no others: an include that points upward does not compile.
# LINKS are libraries of others, kept out of the layer's own face unless marked PUBLIC_LINKS.
function(add_layer NAME)
  cmake_parse_arguments(LAYER "" "" "HEADERS;SOURCES;USES;LINKS;PUBLIC_LINKS" ${ARGN})
  set(target genvara_${NAME})
  add_library(${target} STATIC ${LAYER_SOURCES})
  target_sources(${target} PUBLIC FILE_SET HEADERS
    BASE_DIRS ${CMAKE_CURRENT_SOURCE_DIR} FILES ${LAYER_HEADERS})
  set_target_properties(${target} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON)
  foreach(used IN LISTS LAYER_USES)
    target_link_libraries(${target} PUBLIC genvara_${used})
  endforeach()
  target_link_libraries(${target} PUBLIC genvara_settings ${LAYER_PUBLIC_LINKS} PRIVATE ${LAYER_LINKS})
endfunction()

# Of a test program the compiling takes longer than the running: the optimiser is left out of the tests' own code.
function(compile_tests_quickly TARGET)
  target_compile_options(${TARGET} PRIVATE $<$<CONFIG:Release>:-O0>)
endfunction()

# list_tests(TARGET NAME [variable=value])
#
# ctest runs each test in a process of its own. With the sanitizers a process takes longer to start than most tests take, and there a
# program runs whole, in four parts side by side.
function(list_tests TARGET NAME)
  if(NOT GENVARA_SANITIZE)
    # Parameters by name or number: their values may be texts that are no names, or addresses, which differ from run to run.
    gtest_discover_tests(${TARGET} TEST_PREFIX ${NAME}. NO_PRETTY_VALUES DISCOVERY_TIMEOUT 120 PROPERTIES ENVIRONMENT "${ARGN}")
    return()
  endif()
  foreach(part RANGE 1 4)
    math(EXPR index "${part} - 1")
    add_test(NAME ${NAME}.${part} COMMAND ${TARGET})
    set_tests_properties(${NAME}.${part} PROPERTIES ENVIRONMENT "GTEST_TOTAL_SHARDS=4;GTEST_SHARD_INDEX=${index};${ARGN}")
  endforeach()
endfunction()

# add_layer_tests(NAME SOURCES ... USES layer... [LINKS library...] [ALONE])
#
# One test program a folder of tests/, found by ctest test by test. All but those that stand ALONE take the headers that the tests of the
# base have precompiled, which therefore come first.
function(add_layer_tests NAME)
  cmake_parse_arguments(TESTS "ALONE" "" "SOURCES;USES;LINKS" ${ARGN})
  set(target ${NAME}_tests)
  add_executable(${target} ${TESTS_SOURCES})
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests/support)
  foreach(used IN LISTS TESTS_USES)
    target_link_libraries(${target} PRIVATE genvara_${used})
  endforeach()
  compile_tests_quickly(${target})
  target_link_libraries(${target} PRIVATE genvara_settings ${TESTS_LINKS}
    GTest::gmock GTest::gtest GTest::gtest_main rapidcheck)
  if(NAME STREQUAL base)
    precompile_headers(${target} plain MORE <gmock/gmock.h> <gtest/gtest.h>)
  elseif(NOT TESTS_ALONE)
    precompile_headers(${target} plain FROM base_tests)
  endif()
  list_tests(${target} ${NAME})
endfunction()
