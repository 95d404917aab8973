# Reads every #include "..." under src/ and fails on one that points up: from a file of a lower layer to one of
# a higher layer, or sideways between two subsystems of the same layer. Run by CTest as
#   cmake -DSRC=<src folder> [-DPLANTED=<file>|<included>] -P include_layers.cmake
# PLANTED adds one include as if it were written, so a test can show that an upward one is caught.

# The layers, lowest first. A file belongs to the first layer whose pattern matches its path below src/.
set(layer_names
  "store"       # the booking record and its files; includes nothing of the program above it
  "app seams"   # the prompter, clock, pause, folders, lock question, help key and print dialog every part uses
  "settings"    # the settings file, its windows and the folder picker
  "app state"   # the application state made in main(), and the windows that show it (splash, About)
  "features"    # demo data, lists, passes, photos, the server copy: side by side, none includes another
  "desk"        # the main window and the booking editor
  "programs")   # start-up and main(), porvane-admin
set(layer_patterns
  "^store/"
  "^app/(clock|prompter|pause|app_paths|lock_question|help_topics|message_box_dialog|print_dialog)\\."
  "^settings/"
  "^app/(app_state|splash_window|about_window)\\."
  "^(demo|lists|passes|photos|server)/"
  "^desk/"
  "^(app|admin)/")

function(layer_of path out_var)
  set(index 0)
  foreach(pattern IN LISTS layer_patterns)
    if(path MATCHES "${pattern}")
      set(${out_var} ${index} PARENT_SCOPE)
      return()
    endif()
    math(EXPR index "${index} + 1")
  endforeach()
  set(${out_var} -1 PARENT_SCOPE)
endfunction()

function(check_include file included)
  layer_of("${file}" from)
  layer_of("${included}" to)
  string(REGEX REPLACE "/.*" "" from_subsystem "${file}")
  string(REGEX REPLACE "/.*" "" to_subsystem "${included}")
  if(to EQUAL -1 OR from EQUAL -1)
    return() # reported below for files of src/; a Qt or system header has no layer
  endif()
  list(GET layer_names ${from} from_name)
  list(GET layer_names ${to} to_name)
  if(to GREATER from)
    set_property(GLOBAL APPEND PROPERTY faults "${file} (${from_name}) includes ${included} (${to_name})")
  elseif(to EQUAL from AND NOT from_subsystem STREQUAL to_subsystem)
    set_property(GLOBAL APPEND PROPERTY faults "${file} includes ${included}: ${from_subsystem} and ${to_subsystem} are side by side")
  endif()
endfunction()

file(GLOB_RECURSE files RELATIVE "${SRC}" "${SRC}/*.h" "${SRC}/*.cpp")
if(NOT files)
  message(FATAL_ERROR "no sources under '${SRC}'")
endif()
foreach(file IN LISTS files)
  layer_of("${file}" layer)
  if(layer EQUAL -1)
    set_property(GLOBAL APPEND PROPERTY faults "${file} is in no layer: give it a place in include_layers.cmake")
  endif()
  file(STRINGS "${SRC}/${file}" lines REGEX "^[ \t]*#[ \t]*include[ \t]*\"")
  foreach(line IN LISTS lines)
    string(REGEX REPLACE "^[^\"]*\"([^\"]+)\".*" "\\1" included "${line}")
    check_include("${file}" "${included}")
  endforeach()
endforeach()
if(PLANTED)
  string(REPLACE "|" ";" planted "${PLANTED}")
  list(GET planted 0 file)
  list(GET planted 1 included)
  check_include("${file}" "${included}")
endif()
get_property(faults GLOBAL PROPERTY faults)
if(faults)
  list(JOIN faults "\n  " shown)
  message(FATAL_ERROR "Includes that point up:\n  ${shown}")
endif()
