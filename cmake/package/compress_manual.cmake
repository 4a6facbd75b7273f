# Debian's manual pages are compressed. CPack calls this for the files of its packages before it packs them.
file(GLOB_RECURSE pages "${CPACK_TEMPORARY_DIRECTORY}/*.1")
list(FILTER pages INCLUDE REGEX "/share/man/")
foreach(page IN LISTS pages)
  execute_process(COMMAND gzip -9n ${page} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
