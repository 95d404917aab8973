# Keeps a Qt module's headers out of a target: including one is a compile error that says why. Every public
# header of a Qt module includes its module's global header (<QtGui/qtguiglobal.h>, ...) first, also when it
# is reached as <QtGui/QImage> through the Qt include folder that Qt Core puts on every path; a stand-in for
# that global header, found before Qt's own, stops the compiler there (a missing include is a fatal error,
# so the reason is the first and last thing it prints).
function(porvane_fence_off_headers target module reason)
  string(TOLOWER ${module} lower)
  set(dir ${CMAKE_BINARY_DIR}/header-fences/${target})
  file(CONFIGURE OUTPUT ${dir}/${module}/${lower}global.h
       CONTENT "#error \"${target} may not use ${module}: ${reason}\"\n#include <header-fence-stops-the-compiler-here>\n")
  target_include_directories(${target} BEFORE PRIVATE ${dir})
endfunction()
