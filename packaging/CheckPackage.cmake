# Makes the Debian package from the build folder BUILD, and looks into it.
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
find_program(rsvg_convert rsvg-convert)
if(rsvg_convert)
    set(drawn share/icons/hicolor/16x16/apps/${id}.png share/icons/hicolor/256x256/apps/${id}.png)
endif()
foreach(file ${drawn}
        bin/tessel
        share/applications/${id}.desktop
        share/metainfo/${id}.metainfo.xml
        share/mime/packages/${id}.xml
        share/icons/hicolor/scalable/apps/${id}.svg
        share/icons/hicolor/symbolic/apps/${id}-symbolic.svg
        share/icons/hicolor/scalable/mimetypes/application-x-tessellog+json.svg
        share/man/man1/tessel.1.gz
        share/doc/tessel/copyright
        share/doc/tessel/changelog.gz)
    if(NOT EXISTS ${folder}/unpacked/usr/${file})
        message(FATAL_ERROR "The package has no ${file}")
    endif()
endforeach()

file(STRINGS ${folder}/unpacked/usr/share/dbus-1/services/${id}.service started REGEX "^Exec=")
if(NOT started STREQUAL "Exec=/usr/bin/tessel")
    message(FATAL_ERROR "The bus starts another program: ${started}")
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
