cmake_minimum_required(VERSION 3.25)

# Builds the desktop's table of types from SOURCE in the folder FOLDER, and looks up ours.
find_program(update update-mime-database)
if(NOT update)
    message("update-mime-database is missing")
    return()
endif()

file(REMOVE_RECURSE ${FOLDER})
file(COPY ${SOURCE} DESTINATION ${FOLDER}/mime/packages)
# It returns 0 whatever it finds. Beyond its sight, it would tell the folders that it searches.
execute_process(COMMAND ${CMAKE_COMMAND} -E env XDG_DATA_HOME=${FOLDER} ${update} ${FOLDER}/mime
    OUTPUT_VARIABLE said ERROR_VARIABLE said COMMAND_ERROR_IS_FATAL ANY)
if(said)
    message(FATAL_ERROR "${said}")
endif()

set(type application/x-tessellog+json)
foreach(line "globs2|50:${type}:*.tessel" "aliases|application/org.tessel.tessellog ${type}"
        "subclasses|${type} application/json" "icons|${type}:application-x-tessellog+json")
    string(REGEX MATCH "^(.*)\\|(.*)$" line "${line}")
    set(table ${CMAKE_MATCH_1})
    set(entry ${CMAKE_MATCH_2})
    file(STRINGS ${FOLDER}/mime/${table} entries)
    if(NOT entry IN_LIST entries)
        message(FATAL_ERROR "The table \"${table}\" lacks \"${entry}\": ${entries}")
    endif()
endforeach()
