# Writes the module-definition file that makes a MinGW-built zt.dll export exactly the interface
# of zt/exports.txt, the Windows counterpart of the Linux version script. GCC exports only the
# non-inline members of a dllexport'd template instantiation, while a client built without
# optimisation calls the inline ones too; so every symbol the library's objects define that
# belongs to a listed class (members, vtable, typeinfo) or is a listed function is exported.
#
#   cmake -DNM=nm -DCXXFILT=c++filt -DOBJECT_LIST=objects.txt -DEXPORTS=exports.txt
#         -DOUTPUT=zt.def -P ZtDefFile.cmake
# OBJECT_LIST names one object file per line.

cmake_minimum_required(VERSION 3.25)

file(STRINGS "${OBJECT_LIST}" objects)
file(STRINGS "${EXPORTS}" entries REGEX "^(class|function) ")
set(classes "")
set(functions "")
foreach(entry IN LISTS entries)
  if(entry MATCHES "^class (.+)$")
    list(APPEND classes "${CMAKE_MATCH_1}")
  elseif(entry MATCHES "^function (.+)$")
    list(APPEND functions "${CMAKE_MATCH_1}")
  endif()
endforeach()

execute_process(COMMAND "${NM}" --defined-only --extern-only ${objects}
                OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
# "ADDRESS KIND NAME" lines; text symbols (T) are functions, the others data.
string(REGEX MATCHALL "[0-9a-fA-F]+ [A-Za-z] [^\n]+" lines "${listing}")
set(kinds "")
set(mangled "")
foreach(line IN LISTS lines)
  string(REGEX REPLACE "^[0-9a-fA-F]+ ([A-Za-z]) .*$" "\\1" kind "${line}")
  string(REGEX REPLACE "^[0-9a-fA-F]+ [A-Za-z] " "" name "${line}")
  list(APPEND kinds "${kind}")
  string(APPEND mangled "${name}\n")
endforeach()
file(WRITE "${OUTPUT}.symbols" "${mangled}")
execute_process(COMMAND "${CXXFILT}" INPUT_FILE "${OUTPUT}.symbols"
                OUTPUT_VARIABLE demangled COMMAND_ERROR_IS_FATAL ANY)
file(REMOVE "${OUTPUT}.symbols")
string(REPLACE "\n" ";" mangled "${mangled}")
string(REPLACE "\n" ";" demangled "${demangled}")

set(def "EXPORTS\n")
set(done "")
list(LENGTH kinds count)
if(count GREATER 0)
  math(EXPR last "${count} - 1")
  foreach(i RANGE ${last})
    list(GET kinds ${i} kind)
    list(GET mangled ${i} name)
    list(GET demangled ${i} readable)
    string(REGEX REPLACE "^(vtable for |typeinfo for |typeinfo name for |VTT for )" ""
           readable "${readable}")
    set(listed FALSE)
    if(readable MATCHES "^([^:(]+)::")
      list(FIND classes "${CMAKE_MATCH_1}" at)
      if(at GREATER -1)
        set(listed TRUE)
      endif()
    endif()
    list(FIND functions "${readable}" at)
    if(at GREATER -1)
      set(listed TRUE)
    endif()
    if(NOT readable IN_LIST classes AND NOT listed)
      continue()
    endif()
    # An inline member defined in several objects is exported once.
    if(name IN_LIST done)
      continue()
    endif()
    list(APPEND done "${name}")
    if(kind STREQUAL "T")
      string(APPEND def "  ${name}\n")
    else()
      string(APPEND def "  ${name} DATA\n")
    endif()
  endforeach()
endif()
file(WRITE "${OUTPUT}" "${def}")
