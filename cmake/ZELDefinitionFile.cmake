# cmake -D list=libZEL.map -D output=libZEL.def -P ZELDefinitionFile.cmake
# Writes the names of the list as a module definition file, by which the linkers of Windows export.
# The names of the list are those of 64-bit Linux. There std::size_t is unsigned long and
# std::int64_t is long; on 64-bit Windows they are unsigned long long and long long.
cmake_minimum_required(VERSION 3.25)

# The types of a mangled name's parameters, for Windows.
function(translate_types types result)
    set(done "")
    while(types MATCHES "^([0-9]+)|^S[tabsiod]|^S[0-9A-Z]*_|^D[a-z]|^.")
        set(token ${CMAKE_MATCH_0})
        if(CMAKE_MATCH_1) # An identifier, after its length.
            string(LENGTH ${token} digits)
            math(EXPR length "${digits} + ${token}")
            string(SUBSTRING ${types} 0 ${length} token)
        endif()
        string(LENGTH ${token} length)
        string(SUBSTRING ${types} ${length} -1 types)
        if(token STREQUAL "m")
            set(token y)
        elseif(token STREQUAL "l")
            set(token x)
        endif()
        string(APPEND done ${token})
    endwhile()
    set(${result} "${done}" PARENT_SCOPE)
endfunction()

# The mangled name of an operation or an object, for Windows.
function(translate_name name result)
    # What it is called stays: an operator is written in letters that mean a type elsewhere.
    if(NOT name MATCHES "^_Z(Thn?[0-9]+_)?NK?")
        set(${result} ${name} PARENT_SCOPE)
        return()
    endif()
    set(head ${CMAKE_MATCH_0})
    string(LENGTH ${head} length)
    string(SUBSTRING ${name} ${length} -1 rest)
    while(rest MATCHES "^([0-9]+)|^[CD][0-9]|^[a-z][a-zA-Z]")
        set(length 2)
        if(CMAKE_MATCH_1)
            string(LENGTH ${CMAKE_MATCH_1} digits)
            math(EXPR length "${digits} + ${CMAKE_MATCH_1}")
        endif()
        string(SUBSTRING ${rest} 0 ${length} component)
        string(SUBSTRING ${rest} ${length} -1 rest)
        string(APPEND head ${component})
    endwhile()
    translate_types("${rest}" rest)
    set(${result} ${head}${rest} PARENT_SCOPE)
endfunction()

file(READ ${list} text)
string(REPLACE ";" "" text "${text}") # CMake's own separator.
string(REGEX MATCHALL "\n[# ]* _Z[A-Za-z0-9_]* # " lines "${text}")
set(exports "")
foreach(line IN LISTS lines)
    string(REGEX MATCH "_Z[A-Za-z0-9_]*" name "${line}")
    translate_name(${name} name)
    # Virtual tables and type information are data: no jump leads to them.
    if(name MATCHES "^_ZT[VIST]")
        string(APPEND name " DATA")
    endif()
    string(APPEND exports "    ${name}\n")
endforeach()
if(exports STREQUAL "")
    message(FATAL_ERROR "${list} names nothing")
endif()
file(WRITE ${output} "EXPORTS\n${exports}")
