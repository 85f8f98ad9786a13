# Compiler settings that hold for every target of the project.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

find_program(CCACHE ccache)
if(CCACHE)
    # What it needs to know of precompiled headers: their names are enough, as their contents are looked at anyway.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${CCACHE})
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion)
if(QUORVANE_WERROR)
    add_compile_options(-Werror)
endif()
# g++ 12 warns about designated initialisers that leave the other members at their defaults.
add_compile_options(-Wno-missing-field-initializers)

# What a file keeps to itself is its own, too, where the compiler reads it together with others.
if(CMAKE_UNITY_BUILD)
    add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-Wno-subobject-linkage>)
endif()

if(QUORVANE_SANITIZE)
    add_compile_options(-fsanitize=${QUORVANE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer -Og -g1)
    add_link_options(-fsanitize=${QUORVANE_SANITIZE})
endif()
