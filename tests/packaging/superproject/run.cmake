# Builds the superproject with the sources of zelFolder below workDir, as a shared library or, with
# wantsArchive, as a static one, and runs its host with its plugin. The words of run stand before it.
function(call)
    execute_process(COMMAND ${ARGN} COMMAND_ECHO STDOUT COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(REMOVE_RECURSE ${workDir})
execute_process(COMMAND ${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR} -B ${workDir} -G ${generator}
        -D CMAKE_CXX_COMPILER=${compiler} -D CMAKE_CXX_COMPILER_LAUNCHER=${launcher}
        -D CMAKE_CXX_FLAGS=${flags} -D CMAKE_UNITY_BUILD=ON
        -D zelFolder=${zelFolder} -D wantsArchive=${wantsArchive}
    OUTPUT_VARIABLE output ECHO_OUTPUT_VARIABLE COMMAND_ERROR_IS_FATAL ANY)
if(wantsArchive)
    set(type STATIC_LIBRARY)
else()
    set(type SHARED_LIBRARY)
endif()
if(NOT output MATCHES "ZEL is a ${type}")
    message(FATAL_ERROR "The library is no ${type}.")
endif()
call(${CMAKE_COMMAND} --build ${workDir})
file(GLOB_RECURSE plugin ${workDir}/firstPlugin.*)
list(FILTER plugin INCLUDE REGEX "[.](so|dll|dylib)$")
execute_process(COMMAND ${run} ${workDir}/first/firstHost ${plugin}
    OUTPUT_VARIABLE output ECHO_OUTPUT_VARIABLE COMMAND_ERROR_IS_FATAL ANY)
if(NOT output MATCHES "nodes: Blur Load\nconnected: ")
    message(FATAL_ERROR "The host and its plugin say something else.")
endif()
