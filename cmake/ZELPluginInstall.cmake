# The sample plugin, installed where the programs and the package of the sample host look for it.
include(GNUInstallDirs)
set(ZEL_PLUGIN_DIR libexec/zeledit) # defaultPluginPath of the host has it too.
cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_LIBDIR
    BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX}/${ZEL_PLUGIN_DIR} OUTPUT_VARIABLE libraries)
set_target_properties(shadingDefinitions PROPERTIES INSTALL_RPATH "$ORIGIN")
set_target_properties(shadingPlugin PROPERTIES INSTALL_RPATH "$ORIGIN/${libraries}")
install(TARGETS shadingDefinitions LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS shadingPlugin LIBRARY DESTINATION ${ZEL_PLUGIN_DIR})
