# Run by cpack when it has made the packages or the archive: they become what Debian expects, and
# depend on nothing but the files in them.
get_filename_component(here ${CMAKE_CURRENT_LIST_FILE} DIRECTORY)
if(CPACK_GENERATOR STREQUAL "DEB")
    set(command ${here}/debian/finish ${CPACK_TEMPORARY_DIRECTORY}/finish)
elseif(CPACK_GENERATOR STREQUAL "TGZ" AND CMAKE_HOST_SYSTEM_NAME STREQUAL "Linux")
    set(command ${here}/sortArchive ${CPACK_TEMPORARY_DIRECTORY}/finish)
endif()
if(command)
    execute_process(COMMAND ${command} ${CPACK_PACKAGE_FILES} COMMAND_ERROR_IS_FATAL ANY)
endif()
