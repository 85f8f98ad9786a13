# quorvane_library(NAME USES folders... SOURCES files... LINKS targets...)
#
# One static library for one folder of src/. USES names the folders that it may include and link; scripts/check reads
# the same line and refuses an #include outside its closure. LINKS names third-party targets.
function(quorvane_library name)
    cmake_parse_arguments(arg "" "" "USES;SOURCES;LINKS" ${ARGN})
    string(REPLACE "/" "_" target quorvane_${name})
    add_library(${target} STATIC)
    target_include_directories(${target} PUBLIC ${CMAKE_SOURCE_DIR}/src)
    set(headers ${arg_SOURCES})
    list(FILTER headers INCLUDE REGEX "\\.h$")
    set(bodies ${arg_SOURCES})
    list(FILTER bodies EXCLUDE REGEX "\\.h$")
    target_sources(${target} PRIVATE ${bodies}
        PUBLIC FILE_SET HEADERS BASE_DIRS ${CMAKE_SOURCE_DIR}/src FILES ${headers})
    set_target_properties(${target} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON)
    if(NOT bodies)
        set_target_properties(${target} PROPERTIES LINKER_LANGUAGE CXX)
    endif()
    foreach(folder IN LISTS arg_USES)
        string(REPLACE "/" "_" used quorvane_${folder})
        target_link_libraries(${target} PUBLIC ${used})
    endforeach()
    target_link_libraries(${target} PUBLIC ${arg_LINKS})
endfunction()

# quorvane_precompile(TARGET PRIVATE headers... | REUSE_FROM target)
#
# Compiles headers once for all that share them. Not where each file is compiled by itself: there a file has to name
# what it uses.
function(quorvane_precompile target)
    if(CMAKE_UNITY_BUILD)
        target_precompile_headers(${target} ${ARGN})
        target_compile_options(${target} PRIVATE -fpch-preprocess) # else ccache steps aside
    endif()
endfunction()

# How the tests' own code is compiled; the same for all, as they share precompiled headers.
function(quorvane_test_options target)
    # Tests run once for each time they are compiled: a quarter of the compiler's time is saved.
    target_compile_options(${target} PRIVATE -O0)
    # Qt asks for the first and others for the second of those who link them.
    target_compile_options(${target} PRIVATE -fPIC -pthread)
    if(QUORVANE_SANITIZE) # nor is what they do themselves looked at so closely
        target_compile_options(${target} PRIVATE -fno-sanitize=undefined)
    endif()
    if(CMAKE_UNITY_BUILD) # a name of one file is no shadow over one of another
        target_compile_options(${target} PRIVATE -Wno-shadow)
    endif()
endfunction()

# quorvane_test(NAME FOLDERS folders... SOURCES files... LABELS labels... LINKS targets... [TIMEOUT seconds] [SERIAL])
#
# One test program, linked with the folders that it tests and with tests/support. SERIAL: nothing runs beside it.
function(quorvane_test name)
    cmake_parse_arguments(arg "SERIAL" "TIMEOUT" "FOLDERS;SOURCES;LABELS;LINKS" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    quorvane_test_options(${name})
    quorvane_precompile(${name} REUSE_FROM quorvane_test_main)
    foreach(folder IN LISTS arg_FOLDERS)
        string(REPLACE "/" "_" used quorvane_${folder})
        target_link_libraries(${name} PRIVATE ${used})
    endforeach()
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
    target_link_libraries(${name} PRIVATE ${arg_LINKS} quorvane_test_main)
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 60)
    endif()
    if(NOT arg_LABELS)
        set(arg_LABELS core) # an empty list would take the next word
    endif()
    # Parameters have names; their values may be nothing but bytes.
    gtest_discover_tests(${name} NO_PRETTY_VALUES DISCOVERY_TIMEOUT 60
        PROPERTIES LABELS "${arg_LABELS}" TIMEOUT ${arg_TIMEOUT} RUN_SERIAL ${arg_SERIAL})
endfunction()
