# Copies a resource tree into the build tree's installation. A file already there is replaced only when the
# source is newer, so the site's edits to its pick lists in the build tree survive a rebuild.
file(GLOB_RECURSE files RELATIVE ${SRC} ${SRC}/*)
foreach(f IN LISTS files)
  if(NOT EXISTS ${DST}/${f} OR ${SRC}/${f} IS_NEWER_THAN ${DST}/${f})
    get_filename_component(dir ${DST}/${f} DIRECTORY)
    file(MAKE_DIRECTORY ${dir})
    file(COPY_FILE ${SRC}/${f} ${DST}/${f})
  endif()
endforeach()
