# zint ships neither a CMake config nor a pkg-config file.
find_path(ZINT_INCLUDE_DIR zint.h REQUIRED)
find_library(ZINT_LIBRARY zint REQUIRED)
add_library(Zint::Zint UNKNOWN IMPORTED)
set_target_properties(Zint::Zint PROPERTIES
  IMPORTED_LOCATION ${ZINT_LIBRARY}
  INTERFACE_INCLUDE_DIRECTORIES ${ZINT_INCLUDE_DIR})
