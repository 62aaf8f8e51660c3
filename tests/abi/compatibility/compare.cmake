# Runs the host, a list of words, with the plugin and compares what it prints with the file that was
# written when the release was stored. Windows ends its lines otherwise.
execute_process(COMMAND ${host} ${plugin} OUTPUT_FILE ${output} RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "${host} ended with ${result}")
endif()
execute_process(COMMAND diff -u --strip-trailing-cr ${expected} ${output} RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "A host and a plugin of the stored release see another library.")
endif()
