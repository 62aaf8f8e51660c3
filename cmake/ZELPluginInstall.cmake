# The sample plugin, installed where the programs and the package of the sample host look for it.
include(GNUInstallDirs)
set(ZEL_PLUGIN_DIR libexec/zeledit) # defaultPluginPath of the host has it too.
# Programs and Python's module are linked with the class of the definitions.
set_target_properties(shadingDefinitions PROPERTIES
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR})
zel_run_path(shadingDefinitions ${CMAKE_INSTALL_LIBDIR})
zel_run_path(shadingPlugin ${ZEL_PLUGIN_DIR})
install(TARGETS shadingDefinitions
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT plugin NAMELINK_SKIP)
install(TARGETS shadingPlugin LIBRARY DESTINATION ${ZEL_PLUGIN_DIR} COMPONENT plugin)
