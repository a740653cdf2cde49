cmake_minimum_required(VERSION 3.25)

# Fails when a file of SOURCE/src includes one of a folder that it may not know. Run as a test.
#
#   app ──┬──> mainwindow ──┬──> model ────┐
#         │                 v              ├──> platform/desktop ──> platform
#         ├────────────> settings ─────────┤
#         └────────────> tools ────────────┘
#
# The platform's own folders know less: logstore and predicate nothing but platform/base, which all
# know; their writer and the demonstration logstore alone. Only windows know platform/desktop.

set(model platform platform/logstore platform/predicate)
set(knows_app mainwindow settings tools model platform/desktop ${model})
set(knows_mainwindow settings model platform/desktop ${model})
set(knows_settings platform/desktop ${model})
set(knows_tools platform/desktop ${model})
set(knows_model ${model})
set(knows_platform/desktop ${model})
set(knows_platform platform/logstore platform/logstore/writer platform/predicate
    platform/predicate/binding platform/demonstration)
set(knows_platform/demonstration platform/logstore platform/logstore/writer)
set(knows_platform/logstore/writer platform/logstore)
set(knows_platform/logstore "")
set(predicate platform/predicate/binding platform/predicate/matching platform/predicate/syntax
    platform/predicate/text)
set(knows_platform/predicate ${predicate})
set(knows_platform/predicate/binding platform/predicate ${predicate})
set(knows_platform/predicate/matching platform/predicate/syntax platform/predicate/text)
set(knows_platform/predicate/syntax platform/predicate platform/predicate/text)
set(knows_platform/predicate/text "")
set(knows_platform/base "")

# Inner folders of a part are its own affair.
function(part_of folder result)
    foreach(part platform/logstore/writer platform/logstore ${predicate}
            platform/predicate platform/desktop platform/demonstration platform/base)
        if(folder MATCHES "^${part}(/|$)")
            set(${result} ${part} PARENT_SCOPE)
            return()
        endif()
    endforeach()
    set(${result} ${folder} PARENT_SCOPE)
endfunction()

file(GLOB_RECURSE files RELATIVE ${SOURCE}/src ${SOURCE}/src/*.h ${SOURCE}/src/*.cpp)
if(NOT files)
    message(FATAL_ERROR "There are no files in ${SOURCE}/src")
endif()
foreach(file IN LISTS files)
    get_filename_component(folder ${file} DIRECTORY)
    part_of("${folder}" from)
    if(NOT DEFINED knows_${from})
        message(SEND_ERROR "${file} is in a folder that has no place in the house")
    endif()
    file(STRINGS ${SOURCE}/src/${file} lines REGEX "^#include \"")
    foreach(line IN LISTS lines)
        string(REGEX REPLACE "^#include \"(.*)\".*" "\\1" header "${line}")
        get_filename_component(folder ${header} DIRECTORY)
        part_of("${folder}" to)
        if(NOT EXISTS ${SOURCE}/src/${header} OR to STREQUAL "platform/base"
           OR to STREQUAL from OR to IN_LIST knows_${from})
            continue()
        endif()
        message(SEND_ERROR "${file} may not include ${header}: ${from} does not know ${to}")
    endforeach()
endforeach()
