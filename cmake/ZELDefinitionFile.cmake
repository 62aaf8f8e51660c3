# cmake -D list=libZEL.map -D output=libZEL.def -P ZELDefinitionFile.cmake
# Writes the names of the list as a module definition file, by which the linkers of Windows export.
# The names of the list are those of 64-bit Linux. There std::size_t is unsigned long and
# std::int64_t is long; on 64-bit Windows they are unsigned long long and long long. The texts of type
# information are left out: Windows compares types by them, and each module has its own.
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/ZELNames.cmake)

file(READ ${list} text)
string(REPLACE ";" "" text "${text}") # CMake's own separator.
string(REGEX MATCHALL "\n[# ]* _Z[A-Za-z0-9_]* # " lines "${text}")
set(exports "")
foreach(line IN LISTS lines)
    string(REGEX MATCH "_Z[A-Za-z0-9_]*" name "${line}")
    zel_platform_name(${name} "m=y;l=x" "" name)
    if(name MATCHES "^_ZTS")
        continue()
    elseif(name MATCHES "^_ZT[VIT]") # No jump leads to data.
        string(APPEND name " DATA")
    endif()
    string(APPEND exports "    ${name}\n")
endforeach()
if(exports STREQUAL "")
    message(FATAL_ERROR "${list} names nothing")
endif()
file(WRITE ${output} "EXPORTS\n${exports}")
