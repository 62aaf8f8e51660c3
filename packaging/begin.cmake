# Read by cpack before it makes anything: a tree is made for packages of one kind.
if(CPACK_GENERATOR STREQUAL "DEB" AND NOT CPACK_ZEL_PREFIX STREQUAL "/usr")
    message(FATAL_ERROR "Debian packages are made of a tree that goes to /usr: configure with --preset package.")
elseif(CPACK_GENERATOR STREQUAL "TGZ" AND CPACK_ZEL_PREFIX STREQUAL "/usr")
    message(FATAL_ERROR "A tree that goes to /usr cannot be moved: configure with --preset archive.")
endif()
