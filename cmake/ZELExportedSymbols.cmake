# cmake -D list=libZEL.map -D output=libZEL.exp -P ZELExportedSymbols.cmake
# Writes the names of the list as the linker of macOS reads them: each with one more underscore. A name
# without "*" that the library does not define stops the link there, too.
cmake_minimum_required(VERSION 3.25)

file(READ ${list} text)
string(REPLACE ";" "" text "${text}") # CMake's own separator.
string(REGEX MATCHALL "\n *_Z[A-Za-z0-9_*]* # " lines "${text}")
list(TRANSFORM lines REPLACE "\n *(_Z[A-Za-z0-9_*]*) # " "_\\1")
if(NOT lines)
    message(FATAL_ERROR "${list} names nothing")
endif()
list(JOIN lines "\n" lines)
file(WRITE ${output} "${lines}\n")
