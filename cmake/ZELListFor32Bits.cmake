# cmake -D list=libZEL.map -D output=FILE -P ZELListFor32Bits.cmake
# Writes the list anew with the names of 32-bit Linux: std::size_t is unsigned int there, and a
# pointer has 4 bytes, so the second, third and fourth bases of a class lie nearer to its start.
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/ZELNames.cmake)

file(READ ${list} text)
string(REPLACE ";" "@" text "${text}") # CMake's own separator.
string(REGEX MATCHALL "[^\n]*\n" lines "${text}")
set(changed "")
foreach(line IN LISTS lines)
    if(line MATCHES "^( *)(_Z[A-Za-z0-9_]*)(@.*)$")
        set(before "${CMAKE_MATCH_1}")
        set(behind "${CMAKE_MATCH_3}")
        zel_platform_name(${CMAKE_MATCH_2} m=j "16=8;48=32;64=40;72=44" name)
        set(line "${before}${name}${behind}")
    endif()
    string(APPEND changed "${line}")
endforeach()
string(REPLACE "@" ";" changed "${changed}")
file(WRITE ${output} "${changed}")
