# Every C++ file of the repository as .clang-format writes it. Another major version
# of clang-format lays some lines out differently, so the check runs only with the one
# the tree was formatted with and is skipped (exit 77) elsewhere.
#
#   cmake -DSOURCE_DIR=<repo> -DCLANG_FORMAT=<program> -P style_check.cmake
#
# Prints each place that differs ("file:line:col: error: code should be clang-formatted")
# and fails when there is one. Mend with: clang-format -i FILE

cmake_minimum_required(VERSION 3.25)
set(formatted_with 14)
if(NOT SOURCE_DIR OR NOT CLANG_FORMAT)
  message(FATAL_ERROR "usage: cmake -DSOURCE_DIR=<repo> -DCLANG_FORMAT=<program> -P style_check.cmake")
endif()

execute_process(COMMAND ${CLANG_FORMAT} --version OUTPUT_VARIABLE version_text RESULT_VARIABLE rc)
if(NOT rc EQUAL 0 OR NOT version_text MATCHES "version ([0-9]+)\\.")
  message("style: cannot run ${CLANG_FORMAT}")
  cmake_language(EXIT 77)
endif()
if(NOT CMAKE_MATCH_1 EQUAL formatted_with)
  message("style: clang-format ${CMAKE_MATCH_1} is not ${formatted_with}, the version the tree follows")
  cmake_language(EXIT 77)
endif()

set(files "")
foreach(dir src tests tools bench)
  file(GLOB_RECURSE found ${SOURCE_DIR}/${dir}/*.cpp ${SOURCE_DIR}/${dir}/*.h)
  list(APPEND files ${found})
endforeach()
list(SORT files)
execute_process(COMMAND ${CLANG_FORMAT} --dry-run --Werror --style=file ${files}
                WORKING_DIRECTORY ${SOURCE_DIR} RESULT_VARIABLE rc ERROR_VARIABLE out)
if(NOT rc EQUAL 0)
  message("${out}")
  message(FATAL_ERROR "style: files above differ from .clang-format (mend with clang-format -i FILE)")
endif()
list(LENGTH files count)
message("style: ${count} files follow .clang-format")
