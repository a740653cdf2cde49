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

file(READ ${SOURCE}/CHANGELOG.md text)
string(REGEX MATCH "\n## ([^\n]*)" newest "${text}")
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
