# The layering of the program, checked on its sources: a module of src/ includes only
# its own headers and those of the modules below it, as its seal_module() line in
# src/CMakeLists.txt lists them (and what they list in turn); a module that links no
# QtGui, QtWidgets or QtPrintSupport includes none of their headers; a test folder
# includes no other test folder's file but the shared ones in tests/support/.
#
#   cmake -DSOURCE_DIR=<repo> -DQT_INCLUDE_DIR=<qt6 include dir> -P include_check.cmake
#
# Prints every offending include as "file:line: text (why)" and fails when there is one.

cmake_minimum_required(VERSION 3.25)
if(NOT SOURCE_DIR OR NOT QT_INCLUDE_DIR)
  message(FATAL_ERROR "usage: cmake -DSOURCE_DIR=<repo> -DQT_INCLUDE_DIR=<dir> -P include_check.cmake")
endif()

# --- the modules and their dependencies, from src/CMakeLists.txt -----------------------
file(READ ${SOURCE_DIR}/src/CMakeLists.txt cmake_text)
string(REGEX MATCHALL "\nseal_module\\([^)]*\\)" module_lines "${cmake_text}")
set(modules "")
foreach(line IN LISTS module_lines)
  string(REGEX REPLACE "^\nseal_module\\(([^)]*)\\)$" "\\1" args "${line}")
  string(REGEX REPLACE "[ \t\n]+" ";" args "${args}")
  list(POP_FRONT args name)
  list(APPEND modules ${name})
  set(mode "")
  set(deps_${name} "")
  set(widgets_${name} FALSE)
  foreach(a IN LISTS args)
    if(a STREQUAL "DEPS" OR a STREQUAL "LIBS")
      set(mode ${a})
    elseif(mode STREQUAL "DEPS")
      list(APPEND deps_${name} ${a})
    elseif(a MATCHES "^Qt6::(Gui|Widgets|PrintSupport)$")
      set(widgets_${name} TRUE)
    endif()
  endforeach()
endforeach()
if(NOT modules)
  message(FATAL_ERROR "no seal_module() lines found in src/CMakeLists.txt")
endif()

# Everything a module may include: itself and, transitively, what it builds on. A
# module may use widgets when it or anything below it links them.
foreach(m IN LISTS modules)
  set(todo ${deps_${m}})
  set(below "")
  while(todo)
    list(POP_FRONT todo d)
    if(NOT d IN_LIST below)
      list(APPEND below ${d})
      list(APPEND todo ${deps_${d}})
    endif()
  endwhile()
  set(allowed_${m} ${m} ${below})
  set(gui_${m} ${widgets_${m}})
  foreach(d IN LISTS below)
    if(widgets_${d})
      set(gui_${m} TRUE)
    endif()
  endforeach()
endforeach()

# The class headers of the Qt modules the core library must not see.
set(gui_headers "")
foreach(qtmod QtGui QtWidgets QtPrintSupport)
  file(GLOB names RELATIVE ${QT_INCLUDE_DIR}/${qtmod} ${QT_INCLUDE_DIR}/${qtmod}/Q*)
  list(APPEND gui_headers ${names} ${qtmod})
endforeach()

set(faults "")
macro(fault file line text why)
  file(RELATIVE_PATH rel ${SOURCE_DIR} ${file})
  list(APPEND faults "${rel}:${line}: ${text} (${why})")
endmacro()

# The #include lines of a file as "line|text" items.
function(include_lines file out)
  file(STRINGS ${file} all)
  set(result "")
  set(n 0)
  foreach(l IN LISTS all)
    math(EXPR n "${n} + 1")
    if(l MATCHES "^[ \t]*#[ \t]*include[ \t]*[<\"]([^>\"]+)[>\"]")
      list(APPEND result "${n}|${CMAKE_MATCH_1}")
    endif()
  endforeach()
  set(${out} "${result}" PARENT_SCOPE)
endfunction()

# "line|text" into line and inc.
macro(split_item item)
  string(REGEX REPLACE "^([0-9]+)\\|(.*)$" "\\1" line "${item}")
  string(REGEX REPLACE "^([0-9]+)\\|(.*)$" "\\2" inc "${item}")
endmacro()

# --- src/ -----------------------------------------------------------------------------
foreach(m IN LISTS modules)
  file(GLOB_RECURSE files ${SOURCE_DIR}/src/${m}/*.cpp ${SOURCE_DIR}/src/${m}/*.h)
  foreach(f IN LISTS files)
    include_lines(${f} incs)
    foreach(item IN LISTS incs)
      split_item("${item}")
      string(REGEX REPLACE "/.*$" "" top "${inc}")
      if(inc MATCHES "/" AND top IN_LIST modules AND NOT top IN_LIST allowed_${m})
        fault(${f} ${line} "#include \"${inc}\"" "${m} does not build on ${top}")
      endif()
      if(NOT gui_${m} AND (top IN_LIST gui_headers OR inc IN_LIST gui_headers))
        fault(${f} ${line} "#include <${inc}>" "${m} is core library: no QtGui, QtWidgets or QtPrintSupport")
      endif()
    endforeach()
  endforeach()
endforeach()

# --- tests/ ---------------------------------------------------------------------------
file(GLOB test_dirs LIST_DIRECTORIES true RELATIVE ${SOURCE_DIR}/tests ${SOURCE_DIR}/tests/*)
foreach(t IN LISTS test_dirs)
  if(NOT IS_DIRECTORY ${SOURCE_DIR}/tests/${t} OR t STREQUAL "support")
    continue()
  endif()
  file(GLOB_RECURSE files ${SOURCE_DIR}/tests/${t}/*.cpp ${SOURCE_DIR}/tests/${t}/*.h)
  foreach(f IN LISTS files)
    include_lines(${f} incs)
    foreach(item IN LISTS incs)
      split_item("${item}")
      if(inc MATCHES "^\\.\\./")
        fault(${f} ${line} "#include \"${inc}\"" "a test reaches into another folder: share it in tests/support/")
      elseif(inc MATCHES "/" AND EXISTS ${SOURCE_DIR}/tests/${inc} AND NOT inc MATCHES "^support/"
             AND NOT inc MATCHES "^${t}/")
        fault(${f} ${line} "#include \"${inc}\"" "a test includes another test folder's file: share it in tests/support/")
      endif()
    endforeach()
  endforeach()
endforeach()

list(LENGTH faults count)
foreach(line IN LISTS faults)
  message("${line}")
endforeach()
if(count GREATER 0)
  message(FATAL_ERROR "${count} include(s) break the layering")
endif()
message("includes follow the layering of src/CMakeLists.txt")
