# Install rules: the library, its headers under include/zel, the CMake package ZEL with the target
# ZEL::ZEL, and the pkg-config file zel.pc. Each belongs to a component, which becomes a package:
# runtime, development, plugin, tools, python or doc. Installed without a component's name all of them are.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

set(packageDir ${CMAKE_INSTALL_LIBDIR}/cmake/ZEL)
set(pkgConfigDir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(TARGETS ZEL zelPlugin
    EXPORT ZELTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime # The DLL of Windows.
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development # Or its import library.
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zel COMPONENT development)
if(NOT ZEL_SHARED)
    install(TARGETS zelWhole EXPORT ZELTargets COMPONENT development)
    install(FILES ${CMAKE_CURRENT_LIST_DIR}/libZEL.dynamic DESTINATION ${packageDir}
        COMPONENT development)
endif()
install(EXPORT ZELTargets NAMESPACE ZEL:: DESTINATION ${packageDir} COMPONENT development)

configure_package_config_file(
    ${CMAKE_CURRENT_LIST_DIR}/ZELConfig.cmake.in ${PROJECT_BINARY_DIR}/ZELConfig.cmake
    INSTALL_DESTINATION ${packageDir})
write_basic_package_version_file(
    ${PROJECT_BINARY_DIR}/ZELConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ZELConfig.cmake ${PROJECT_BINARY_DIR}/ZELConfigVersion.cmake
    DESTINATION ${packageDir} COMPONENT development)

# The installed tree can be moved as long as the library directory lies below the prefix: zel.pc
# then finds the prefix from its own place.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
    set(pcPrefix ${CMAKE_INSTALL_PREFIX})
else()
    cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX
        BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX}/${pkgConfigDir} OUTPUT_VARIABLE up)
    set(pcPrefix "\${pcfiledir}/${up}")
endif()
set(pcLibDir "\${prefix}")
cmake_path(APPEND pcLibDir ${CMAKE_INSTALL_LIBDIR})
set(pcIncludeDir "\${prefix}")
cmake_path(APPEND pcIncludeDir ${CMAKE_INSTALL_INCLUDEDIR} zel)
set(pcFlags "-I\${includedir}")
set(pcLibs "-L\${libdir}")
if(ZEL_SHARED)
    string(APPEND pcLibs " -lZEL")
else()
    string(APPEND pcFlags " -DZEL_STATIC")
    zel_archive_flags(pcLibs "\${libdir}" "\${libdir}/cmake/ZEL")
endif()
configure_file(${CMAKE_CURRENT_LIST_DIR}/zel.pc.in ${PROJECT_BINARY_DIR}/zel.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zel.pc DESTINATION ${pkgConfigDir} COMPONENT development)
