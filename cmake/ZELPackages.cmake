# What cpack makes. A tree configured for /usr (the preset package) gives Debian packages, one for each
# component, by cpack -G DEB; any other one (the preset archive) gives one archive of a tree that can be
# moved, by cpack -G TGZ. docs/packages.md says what each holds.
set(CPACK_PACKAGE_NAME libzel)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "libZEL developers")
set(CPACK_PACKAGE_CONTACT "libZEL developers <libzel@example.org>")
# Each package has a summary of its own; this one would stand before it.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_GENERATOR TGZ)
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    set(CPACK_GENERATOR DEB)
endif()
string(TOLOWER "${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}" system)
set(CPACK_PACKAGE_FILE_NAME libzel-${PROJECT_VERSION}-${system})

# Archives: everything in one.
set(CPACK_ARCHIVE_COMPONENT_INSTALL OFF)

# Debian: a package for each component.
set(CPACK_COMPONENTS_ALL runtime development)
if(ZEL_BUILD_EXAMPLES)
    list(APPEND CPACK_COMPONENTS_ALL plugin tools)
endif()
if(ZEL_PYTHON)
    list(APPEND CPACK_COMPONENTS_ALL python)
endif()
if(ZEL_BUILD_DOCS)
    list(APPEND CPACK_COMPONENTS_ALL doc)
endif()
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SOURCE libzel)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)

# zel_debian_package(COMPONENT NAME SECTION SUMMARY DESCRIPTION): the first paragraph of all is the same.
macro(zel_debian_package component name section summary description)
    string(TOUPPER ${component} upper)
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name})
    set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section})
    set(CPACK_DEBIAN_${upper}_DESCRIPTION "${summary}
libZEL holds the object model of a node network for graph editors: nodes
with ordered, typed ports, connections, networks inside nodes, and
documents in which every node and port has a path.

${description}")
endmacro()

zel_debian_package(runtime libzel${PROJECT_VERSION_MAJOR} libs
    "object model of a node network for graph editors"
    "This package holds the shared library.")
zel_debian_package(development libzel-dev libdevel
    "object model of a node network for graph editors (development)"
    "This package holds what is needed to build hosts and plugins: the
headers, the CMake package ZEL, the file for pkg-config, the conformance
kit (tests for the classes of a host, for use with GoogleTest), and the
printers by which gdb shows the objects.")
zel_debian_package(plugin zel-shading graphics
    "definitions of shading nodes for hosts of libZEL"
    "This package holds the plugin of the sample host: the definitions of
shading nodes that zelsh, zeledit and the Python package zel.shading work
with.")
zel_debian_package(tools zel-tools graphics
    "editors for networks of shading nodes"
    "This package holds the programs of the sample host: zelsh runs commands
that look at documents, edit, check, draw and save them; zeledit does the
same in a window, on a canvas of boxes and wires.")
zel_debian_package(python python3-zel python
    "object model of a node network for graph editors (Python 3)"
    "This package holds the Python package zel, with every public class of
the library, and zel.shading, which opens, edits, checks, draws and saves
documents of shading nodes.")
zel_debian_package(doc libzel-doc doc
    "object model of a node network for graph editors (documentation)"
    "This package holds the guides and the reference of the classes as HTML,
and the examples: a first host with its plugin, a larger plugin, scripts,
and documents.")

# What the packages need by their libraries, packaging/debian/finish finds out.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "libzel${PROJECT_VERSION_MAJOR} (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_RECOMMENDS libgtest-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS libzel-doc)
set(CPACK_DEBIAN_TOOLS_PACKAGE_RECOMMENDS "shared-mime-info, hicolor-icon-theme")
set(CPACK_DEBIAN_TOOLS_PACKAGE_SUGGESTS "libzel-doc, qt6-wayland")
if(ZEL_PYTHON)
    math(EXPR nextMinor "${Python3_VERSION_MINOR} + 1")
    set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "python3 (>= ${Python3_VERSION_MAJOR}.${Python3_VERSION_MINOR}~), python3 (<< ${Python3_VERSION_MAJOR}.${nextMinor}~)")
endif()
set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS libzel-doc)
set(CPACK_DEBIAN_DOC_PACKAGE_ARCHITECTURE all)

# Before any is made.
set(CPACK_ZEL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/packaging/begin.cmake)

# When all are made.
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/finish.cmake)
include(CPack)
