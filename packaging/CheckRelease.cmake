cmake_minimum_required(VERSION 3.25)

# Fails unless what the tree SOURCE tells of the newest release is VERSION, of the same day
# everywhere.
function(expect file found wanted)
    if(NOT found STREQUAL wanted)
        message(SEND_ERROR "${file} tells of \"${found}\", not of \"${wanted}\"")
    endif()
endfunction()

set(metainfo packaging/org.tessel.Tessel.metainfo.xml)
file(READ ${SOURCE}/${metainfo} text)
string(REGEX MATCH "<release version=\"([^\"]*)\" date=\"([^\"]*)\"" newest "${text}")
set(date ${CMAKE_MATCH_2})
expect(${metainfo} "${CMAKE_MATCH_1}" ${VERSION})

# A picture is published as it is in the tree.
string(REGEX MATCHALL "<image [^<]*" images "${text}")
foreach(image IN LISTS images)
    string(REGEX MATCH "pictures/[^/]*\\.png$" picture "${image}")
    file(READ ${SOURCE}/resources/${picture} size OFFSET 16 LIMIT 8 HEX) # of a PNG file's head
    string(REGEX MATCH "width=\"([0-9]*)\" height=\"([0-9]*)\"" declared "${image}")
    string(REGEX MATCH "^(........)(........)$" found "${size}")
    math(EXPR width 0x${CMAKE_MATCH_1})
    math(EXPR height 0x${CMAKE_MATCH_2})
    expect(resources/${picture} "width=\"${width}\" height=\"${height}\"" "${declared}")
endforeach()

file(READ ${SOURCE}/CHANGELOG.md text)
string(REGEX MATCH "\n## ([0-9][^\n]*)" newest "${text}") # what is not released stands above it
expect(CHANGELOG.md "${CMAKE_MATCH_1}" "${VERSION} (${date})")

file(READ ${SOURCE}/packaging/changelog text)
string(REGEX MATCH "^tessel \\(([^)]*)\\).*> +..., ([0-9]+) (...) ([0-9]+)" newest "${text}")
set(months "JanFebMarAprMayJunJulAugSepOctNovDec")
string(FIND ${months} "${CMAKE_MATCH_3}" month)
math(EXPR month "${month} / 3 + 101")
string(SUBSTRING ${month} 1 2 month)
expect(packaging/changelog "${CMAKE_MATCH_1} (${CMAKE_MATCH_4}-${month}-${CMAKE_MATCH_2})"
    "${VERSION} (${date})")

file(READ ${SOURCE}/packaging/tessel.1 text)
string(REGEX MATCH "\"Tessel ([^\"]*)\"" newest "${text}")
expect(packaging/tessel.1 "${CMAKE_MATCH_1}" ${VERSION})
