# Installs the library from buildDir below workDir, moves the installed tree, and there builds and
# runs the consumer through find_package and through pkg-config. The words of run stand before the
# programs, whose names end in suffix. Any failure is the test's.
set(first ${workDir}/first)
set(prefix ${workDir}/moved)
set(source ${CMAKE_CURRENT_LIST_DIR})

function(call)
    execute_process(COMMAND ${ARGN} COMMAND_ECHO STDOUT COMMAND_ERROR_IS_FATAL ANY)
endfunction()

function(expectSame what actual expected)
    if(NOT "${actual}" STREQUAL "${expected}")
        message(FATAL_ERROR "${what}: \"${actual}\" instead of \"${expected}\"")
    endif()
endfunction()

if(IS_ABSOLUTE "${libDir}")
    message(FATAL_ERROR "CMAKE_INSTALL_LIBDIR is absolute (${libDir}): the test would install "
        "there. Configure with a relative one.")
endif()
file(REMOVE_RECURSE ${workDir})
call(${CMAKE_COMMAND} --install ${buildDir} --prefix ${first})
file(RENAME ${first} ${prefix})
if(NOT EXISTS ${prefix}/include/zel/zel.h)
    message(FATAL_ERROR "The headers are not in include/zel.")
endif()

# Programs of Windows look for the library beside themselves, and in these folders.
set(ENV{WINEPATH} ${prefix}/bin)

message(STATUS "Through find_package")
call(${CMAKE_COMMAND} -S ${source} -B ${workDir}/build -G ${generator}
    -D CMAKE_PREFIX_PATH=${prefix} -D CMAKE_CXX_COMPILER=${compiler} -D CMAKE_CXX_FLAGS=${flags}
    -D ZEL_VERSION_WANTED=${version} -D GTest_DIR=${gtestDir})
call(${CMAKE_COMMAND} --build ${workDir}/build)
call(${run} ${workDir}/build/consumer${suffix})
if(EXISTS ${prefix}/include/zel/zelConformance.h)
    call(${run} ${workDir}/build/conformance${suffix})
else()
    message(STATUS "SKIPPED: the conformance kit was built without GoogleTest, so not at all")
endif()
file(STRINGS ${workDir}/build/CMakeCache.txt found REGEX "^ZEL_DIR:" ENCODING UTF-8)
expectSame("find_package found" "${found}" "ZEL_DIR:PATH=${prefix}/${libDir}/cmake/ZEL")

message(STATUS "Through pkg-config")
# Not every program of that name leaves a repetition out.
file(STRINGS ${prefix}/${libDir}/pkgconfig/zel.pc libs REGEX "^Libs:")
string(REGEX MATCHALL "-lZEL|libZEL[.]a" named "${libs}")
list(LENGTH named times)
expectSame("zel.pc names the library so often" "${times}" 1)
set(ENV{PKG_CONFIG_PATH} ${prefix}/${libDir}/pkgconfig)
foreach(question IN ITEMS --modversion --cflags --libs)
    execute_process(COMMAND ${pkgConfig} ${question} zel
        OUTPUT_VARIABLE answer${question} OUTPUT_STRIP_TRAILING_WHITESPACE
        COMMAND_ECHO STDOUT COMMAND_ERROR_IS_FATAL ANY)
endforeach()
expectSame("pkg-config --modversion" "${answer--modversion}" "${version}")
separate_arguments(flags UNIX_COMMAND "${flags}")
separate_arguments(cflags UNIX_COMMAND "${answer--cflags}")
separate_arguments(libs UNIX_COMMAND "${answer--libs}")
function(compile name)
    call(${compiler} -std=c++17 ${flags} ${cflags} ${ARGN} -o ${workDir}/${name})
endfunction()
compile(consumer${suffix} ${source}/consumer.cpp ${libs} -Wl,-rpath,${prefix}/${libDir})
call(${run} ${workDir}/consumer${suffix})

# A static library is a part of the host alone.
if(EXISTS ${prefix}/${libDir}/libZEL.a)
    set(first ${source}/../../../examples/first)
    compile(firstHost ${first}/firstHost.cpp ${libs} -ldl)
    compile(firstPlugin.so ${first}/firstPlugin.cpp -fPIC -shared -fvisibility=hidden)
    call(${run} ${workDir}/firstHost ${workDir}/firstPlugin.so)
endif()
