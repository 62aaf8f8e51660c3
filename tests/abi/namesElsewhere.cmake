# The forms of the list of exported names that are made of it while building.
#   cmake -D workDir=FOLDER -P namesElsewhere.cmake
cmake_minimum_required(VERSION 3.25)
set(scripts ${CMAKE_CURRENT_LIST_DIR}/../../cmake)
set(list ${workDir}/list.map)

# Letters in the name of an operation stay, as in "ml", the operator *; so do substitutions.
file(WRITE ${list} [[
# Elsewhere these too, in "_Z":
# _ZN1A4NoteC1ERKSt9type_infob; # A::Note::Note(std::type_info const&, bool)
V_0 {
global:
    _ZN1A5lemon4smllEPKclm; # A::lemon::smll(char const*, long, unsigned long)
    _ZN1AmlEm; # A::operator*(unsigned long)
    _ZNK1A3getESt6vectorImSaImEERKS2_; # A::get(...) const
    _ZThn16_N1A5Under3addEm; # non-virtual thunk to A::Under::add(unsigned long)
    _ZTVN1A4NodeE; # vtable for A::Node
    _ZTIN1A4NodeE; # typeinfo for A::Node
    _ZTSN1A4NodeE; # typeinfo name for A::Node
local:
    *;
};
]])

function(expect script expected)
    set(output ${workDir}/${script})
    execute_process(COMMAND ${CMAKE_COMMAND} -D list=${list} -D output=${output}
        -P ${scripts}/${script}.cmake COMMAND_ERROR_IS_FATAL ANY)
    file(READ ${output} made)
    if(NOT made STREQUAL expected)
        message(SEND_ERROR "${script} made\n${made}instead of\n${expected}")
    endif()
endfunction()

expect(ZELDefinitionFile [[
EXPORTS
    _ZN1A4NoteC1ERKSt9type_infob
    _ZN1A5lemon4smllEPKcxy
    _ZN1AmlEy
    _ZNK1A3getESt6vectorIySaIyEERKS2_
    _ZThn16_N1A5Under3addEy
    _ZTVN1A4NodeE DATA
    _ZTIN1A4NodeE DATA
]])
expect(ZELListFor32Bits [[
# Elsewhere these too, in "_Z":
# _ZN1A4NoteC1ERKSt9type_infob; # A::Note::Note(std::type_info const&, bool)
V_0 {
global:
    _ZN1A5lemon4smllEPKclj; # A::lemon::smll(char const*, long, unsigned long)
    _ZN1AmlEj; # A::operator*(unsigned long)
    _ZNK1A3getESt6vectorIjSaIjEERKS2_; # A::get(...) const
    _ZThn8_N1A5Under3addEj; # non-virtual thunk to A::Under::add(unsigned long)
    _ZTVN1A4NodeE; # vtable for A::Node
    _ZTIN1A4NodeE; # typeinfo for A::Node
    _ZTSN1A4NodeE; # typeinfo name for A::Node
local:
    *;
};
]])

# A list that names nothing would export everything.
file(WRITE ${list} "V_0 {\n};\n")
execute_process(COMMAND ${CMAKE_COMMAND} -D list=${list} -D output=${workDir}/none
    -P ${scripts}/ZELDefinitionFile.cmake RESULT_VARIABLE result ERROR_VARIABLE error)
if(result EQUAL 0 OR NOT error MATCHES "names[ \n]+nothing")
    message(SEND_ERROR "An empty list is taken: ${error}")
endif()
