# CPack runs this before it packs. Its own way to strip would write the time into the files.
file(GLOB binaries ${CPACK_TEMPORARY_DIRECTORY}/bin/*)
execute_process(COMMAND ${CPACK_STRIP_COMMAND} --preserve-dates ${binaries} COMMAND_ERROR_IS_FATAL ANY)
