# Makes the Debian package from the build folder BUILD, and looks into it. HARDENED: the program has
# to have what makes it hard to attack.
foreach(tool dpkg-deb dpkg-shlibdeps)
    find_program(found_${tool} ${tool})
    if(NOT found_${tool})
        message("${tool} is missing")
        return()
    endif()
endforeach()

set(folder ${BUILD}/package-test)
file(REMOVE_RECURSE ${folder})
file(MAKE_DIRECTORY ${folder})
get_filename_component(cpack ${CMAKE_COMMAND} DIRECTORY)
execute_process(COMMAND ${cpack}/cpack --config ${BUILD}/CPackConfig.cmake -B ${folder}
    WORKING_DIRECTORY ${folder} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(GLOB packages ${folder}/tessel_*.deb)
list(LENGTH packages count)
if(NOT count EQUAL 1)
    message(FATAL_ERROR "One package was expected: ${packages}")
endif()

execute_process(COMMAND dpkg-deb --extract ${packages} ${folder}/unpacked COMMAND_ERROR_IS_FATAL ANY)
set(id org.tessel.Tessel)
foreach(size 16 22 24 32 48 64 128 256)
    list(APPEND expected share/icons/hicolor/${size}x${size}/apps/${id}.png)
endforeach()
list(APPEND expected
    bin/tessel
    share/applications/${id}.desktop
    share/dbus-1/services/${id}.service
    share/metainfo/${id}.metainfo.xml
    share/mime/packages/${id}.xml
    share/icons/hicolor/scalable/apps/${id}.svg
    share/icons/hicolor/symbolic/apps/${id}-symbolic.svg
    share/icons/hicolor/scalable/mimetypes/application-x-tessellog+json.svg
    share/man/man1/tessel.1.gz
    share/doc/tessel/copyright
    share/doc/tessel/changelog.gz)
file(GLOB_RECURSE found RELATIVE ${folder}/unpacked/usr ${folder}/unpacked/*)
list(SORT expected)
if(NOT found STREQUAL expected)
    message(FATAL_ERROR "The package has ${found}, not ${expected}")
endif()

if(HARDENED)
    execute_process(COMMAND readelf -lWd ${folder}/unpacked/usr/bin/tessel OUTPUT_VARIABLE head)
    execute_process(COMMAND readelf -sDW ${folder}/unpacked/usr/bin/tessel OUTPUT_VARIABLE symbols)
    foreach(sign "GNU_RELRO" "NOW" "PIE" "__stack_chk_fail" "__[a-z]+_chk")
        if(NOT "${head}${symbols}" MATCHES "${sign}")
            message(FATAL_ERROR "The program is not hardened: it lacks ${sign}")
        endif()
    endforeach()
endif()

file(STRINGS ${folder}/unpacked/usr/share/dbus-1/services/${id}.service started REGEX "^Exec=")
if(NOT started STREQUAL "Exec=/usr/bin/tessel")
    message(FATAL_ERROR "The bus starts another program: ${started}")
endif()

execute_process(COMMAND dpkg-deb --field ${packages} Homepage
    OUTPUT_VARIABLE homepage OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
file(READ ${folder}/unpacked/usr/share/metainfo/${id}.metainfo.xml metainfo)
if(NOT metainfo MATCHES "<url type=\"homepage\">([^<]*)<" OR NOT homepage STREQUAL CMAKE_MATCH_1)
    message(FATAL_ERROR "The package's home page \"${homepage}\" is not the program's")
endif()

execute_process(COMMAND dpkg-deb --field ${packages} Depends
    OUTPUT_VARIABLE depends COMMAND_ERROR_IS_FATAL ANY)
foreach(library libqt6widgets6 libqt6pdfwidgets6 libqt6svg6)
    if(NOT depends MATCHES "${library}")
        message(FATAL_ERROR "The package does not depend on ${library}: ${depends}")
    endif()
endforeach()

find_program(appstreamcli appstreamcli)
if(appstreamcli)
    execute_process(COMMAND ${appstreamcli} validate-tree --no-net ${folder}/unpacked
        COMMAND_ERROR_IS_FATAL ANY)
endif()
find_program(lintian lintian)
if(lintian)
    execute_process(COMMAND ${lintian} --fail-on error,warning ${packages}
        COMMAND_ERROR_IS_FATAL ANY)
endif()
file(REMOVE_RECURSE ${folder})
