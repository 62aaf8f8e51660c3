# Installs from buildDir below workDir, moves the installed tree, and there runs installed.py with
# nothing but PYTHONPATH. Any failure is the test's.
if(IS_ABSOLUTE "${packagesDir}")
    message(FATAL_ERROR "ZEL_PYTHON_DIR is absolute (${packagesDir}): the test would install there. "
        "Configure with a relative one.")
endif()
list(FILTER environment EXCLUDE REGEX "^PYTHONPATH=") # Of the build tree.
file(REMOVE_RECURSE ${workDir})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${buildDir} --prefix ${workDir}/first
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(RENAME ${workDir}/first ${workDir}/moved)
file(MAKE_DIRECTORY ${workDir}/empty)
execute_process(
    COMMAND env --ignore-environment ${environment} PYTHONPATH=${workDir}/moved/${packagesDir}
        ASAN_OPTIONS=$ENV{ASAN_OPTIONS}
        ${python} -s ${CMAKE_CURRENT_LIST_DIR}/installed.py ${workDir}/moved ${documents} ${shading}
    WORKING_DIRECTORY ${workDir}/empty
    COMMAND_ERROR_IS_FATAL ANY)
