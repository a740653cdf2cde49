# Warnings and sanitizers stand on one interface target: third-party code never sees them. Warnings
# are errors for developers only: another compiler may know more of them than those we build with.
add_library(tessel_options INTERFACE)
target_compile_options(tessel_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Wcast-align
    -Woverloaded-virtual -Wconversion -Wno-sign-conversion -Wimplicit-fallthrough
    # GCC 12, when it optimises, sees overlapping copies in plain assignments to std::string and
    # uninitialised members in moved std::variants. Other compilers do not know these warnings.
    -Wno-restrict -Wno-maybe-uninitialized -Wno-unknown-warning-option)
if(TESSEL_DEVELOPER)
    target_compile_options(tessel_options INTERFACE -Werror)
endif()
target_compile_definitions(tessel_options INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS)
if(TESSEL_SANITIZE)
    target_compile_options(tessel_options INTERFACE
        -fsanitize=${TESSEL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(tessel_options INTERFACE -fsanitize=${TESSEL_SANITIZE})
endif()

# What users run is hard to attack, and tells no folder of the machine that built it.
target_compile_options(tessel_options INTERFACE $<$<NOT:$<CONFIG:Debug>>:
    -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -fstack-protector-strong -fstack-clash-protection
    -ffile-prefix-map=${PROJECT_SOURCE_DIR}=tessel -ffile-prefix-map=${PROJECT_BINARY_DIR}=build>)
target_link_options(tessel_options INTERFACE $<$<NOT:$<CONFIG:Debug>>:-Wl,-z,relro -Wl,-z,now>)

# tessel_resources(TARGET NAME PREFIX prefix BASE folder FILES file...)
# Makes files a part of a program: in a format that holds no times, so that two builds are the same.
function(tessel_resources target name)
    qt_add_resources(${target} ${name} ${ARGN} OPTIONS --format-version 1)
endfunction()

# tessel_precompiled(NAME LINKS target...)
# The headers of precompiled/NAME.h, compiled once for the folders that name it.
function(tessel_precompiled name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LINKS")
    set(source ${CMAKE_BINARY_DIR}/precompiled_${name}.cpp)
    file(CONFIGURE OUTPUT ${source} CONTENT "")
    add_library(tessel_precompiled_${name} STATIC ${source})
    target_link_libraries(tessel_precompiled_${name} PRIVATE ${arg_LINKS} tessel_options)
    target_precompile_headers(tessel_precompiled_${name} PRIVATE
        ${PROJECT_SOURCE_DIR}/cmake/precompiled/${name}.h)
endfunction()
tessel_precompiled(standard)
tessel_precompiled(core LINKS Qt6::Core)
tessel_precompiled(widgets LINKS Qt6::Widgets)

# tessel_folder(NAME [QT] PRECOMPILED name LINKS target... SOURCES file...)
# One folder of src/ as one static library, tessel_NAME. QT turns the meta-object compiler on.
function(tessel_folder name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "QT" "PRECOMPILED" "LINKS;SOURCES")
    add_library(tessel_${name} STATIC ${arg_SOURCES})
    target_include_directories(tessel_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(tessel_${name} PUBLIC ${arg_LINKS} PRIVATE tessel_options)
    target_precompile_headers(tessel_${name} REUSE_FROM tessel_precompiled_${arg_PRECOMPILED})
    set_target_properties(tessel_${name} PROPERTIES AUTOMOC ${arg_QT})
endfunction()

find_program(LOCALEDEF localedef)

# The home of a user who has nothing yet: no test reads or writes the developer's own.
set(TESSEL_TEST_HOME ${CMAKE_BINARY_DIR}/test-home)
file(MAKE_DIRECTORY ${TESSEL_TEST_HOME}/runtime)
file(CHMOD ${TESSEL_TEST_HOME}/runtime DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)

# What every test runs with. Leaks that are the libraries' own are told from ours by name.
set(TESSEL_TEST_ENVIRONMENT
    "TZ=UTC" "LC_ALL=C.UTF-8" "QT_QPA_PLATFORM=offscreen"
    "HOME=${TESSEL_TEST_HOME}" "XDG_RUNTIME_DIR=${TESSEL_TEST_HOME}/runtime"
    "XDG_CONFIG_HOME=${TESSEL_TEST_HOME}/.config" "XDG_CACHE_HOME=${TESSEL_TEST_HOME}/.cache"
    "XDG_STATE_HOME=${TESSEL_TEST_HOME}/.local/state"
    "XDG_DATA_HOME=${TESSEL_TEST_HOME}/.local/share"
    "DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent"
    "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0")

# tessel_tests(FOLDER CLASSES name... [LINKS target...] [SOURCES file...])
# The Qt Test classes of one folder, each in its tst_NAME.cpp, in one program, tests_FOLDER. Each class
# runs as a test of its own, tst_NAME, with a fixed time zone and locale and no display.
function(tessel_tests folder)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "CLASSES;LINKS;SOURCES")
    set(program tests_${folder})
    list(TRANSFORM arg_CLASSES REPLACE "(.+)" "tst_\\1.cpp" OUTPUT_VARIABLE sources)
    set(support ${PROJECT_SOURCE_DIR}/tests/support)
    add_executable(${program}
        ${sources} ${arg_SOURCES} ${support}/testcase.cpp ${support}/testcase.h)
    target_include_directories(${program} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_link_libraries(${program} PRIVATE ${arg_LINKS} Qt6::Test tessel_options)
    target_precompile_headers(${program} PRIVATE ${support}/testcase.h)
    set_target_properties(${program} PROPERTIES AUTOMOC ON)
    foreach(class ${arg_CLASSES})
        add_test(NAME tst_${class} COMMAND ${program} ${class})
        set_tests_properties(tst_${class} PROPERTIES
            ENVIRONMENT "${TESSEL_TEST_ENVIRONMENT}" TIMEOUT 300)
    endforeach()
endfunction()

# tessel_elsewhere(NAME COMMAND...)
# Runs a test once more, as NAME_elsewhere: where the clock is half an hour apart from others, and
# the language writes numbers with a comma.
function(tessel_elsewhere name)
    set(command ${ARGN})
    set(locales ${CMAKE_BINARY_DIR}/locales)
    if(LOCALEDEF AND NOT EXISTS ${locales}/de_DE.UTF-8)
        file(MAKE_DIRECTORY ${locales})
        execute_process(COMMAND ${LOCALEDEF} -i de_DE -f UTF-8 ${locales}/de_DE.UTF-8 ERROR_QUIET)
    endif()
    if(EXISTS ${locales}/de_DE.UTF-8)
        add_test(NAME ${name}_elsewhere COMMAND ${command})
    else()
        add_test(NAME ${name}_elsewhere COMMAND ${CMAKE_COMMAND} -E echo "The locale is missing")
        set_tests_properties(${name}_elsewhere PROPERTIES SKIP_REGULAR_EXPRESSION "is missing")
    endif()
    set_tests_properties(${name}_elsewhere PROPERTIES TIMEOUT 300 ENVIRONMENT
        "${TESSEL_TEST_ENVIRONMENT};TZ=Asia/Kolkata;LC_ALL=de_DE.UTF-8;LOCPATH=${locales}")
endfunction()

# tessel_bench(NAME [LINKS target...] [SOURCES file...]): one program of bench/, never installed.
function(tessel_bench name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LINKS;SOURCES")
    add_executable(${name} ${name}.cpp ${arg_SOURCES})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_link_libraries(${name} PRIVATE ${arg_LINKS} tessel_options)
endfunction()

# tessel_fuzz(NAME [LINKS target...]): a libFuzzer target from NAME.cpp. Without TESSEL_FUZZ it links
# replay.cpp instead and runs its corpus as a test, so that no target can rot.
function(tessel_fuzz name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LINKS")
    add_executable(${name} ${name}.cpp)
    target_link_libraries(${name} PRIVATE ${arg_LINKS} tessel_options)
    if(TESSEL_FUZZ)
        target_compile_options(${name} PRIVATE -fsanitize=fuzzer)
        target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    else()
        target_sources(${name} PRIVATE replay.cpp)
        add_test(NAME ${name} COMMAND ${name} ${CMAKE_CURRENT_SOURCE_DIR}/corpus/${name})
    endif()
endfunction()
