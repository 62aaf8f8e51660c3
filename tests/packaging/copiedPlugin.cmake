# Installs the package, copies the plugin's folder, builds it there and lets zelsh load the result.
function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "failed: ${ARGN}\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

if(IS_ABSOLUTE "${libDir}")
    message(FATAL_ERROR "CMAKE_INSTALL_LIBDIR is absolute (${libDir}): the test would install "
        "there. Configure with a relative one.")
endif()
file(REMOVE_RECURSE ${workDir})
run(${CMAKE_COMMAND} --install ${buildDir} --prefix ${workDir}/installed)
file(COPY ${pluginDir}/ DESTINATION ${workDir}/source)
run(${CMAKE_COMMAND} -S ${workDir}/source -B ${workDir}/build -G ${generator}
    -D CMAKE_CXX_COMPILER=${compiler} -D CMAKE_CXX_FLAGS=${flags}
    -D CMAKE_PREFIX_PATH=${workDir}/installed)
run(${CMAKE_COMMAND} --build ${workDir}/build)
file(WRITE ${workDir}/t.mtlx "<materialx/>")
run(${zelsh} --plugin ${workDir}/build/shadingPlugin.so ${workDir}/t.mtlx -c runtimes -c "create add a")
if(NOT output STREQUAL "index 0 Shading\nname Shading in use\nTop.a ND_add_float\n")
    message(FATAL_ERROR "unexpected: ${output}")
endif()
