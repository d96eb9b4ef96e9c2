# A room is one folder of src/ with one target. Its headers are reached as "folder/…" through an include root that holds that
# folder alone, so a file can include only the rooms that its target links: a wrong arrow does not compile.
function(tarnsift_room target folder)
  set(root ${CMAKE_BINARY_DIR}/include/${folder})
  file(MAKE_DIRECTORY ${root})
  if(NOT EXISTS ${root}/${folder})
    file(CREATE_LINK ${CMAKE_SOURCE_DIR}/src/${folder} ${root}/${folder} SYMBOLIC)
  endif()
  target_include_directories(${target} PUBLIC ${root})
  target_link_libraries(${target} PRIVATE tarnsift_settings)
  tarnsift_precompile(${target})
endfunction()

# A test program per room: tarnsift_test(name SOURCES… LINK targets…)
function(tarnsift_test name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_LINK} tarnsift_settings GTest::gmock_main)
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_compile_definitions(${name} PRIVATE TARNSIFT_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
  target_precompile_headers(${name} PRIVATE
    <algorithm> <map> <memory> <string> <vector> <gmock/gmock.h> <gtest/gtest.h>)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120 ENVIRONMENT LC_ALL=C)
endfunction()
