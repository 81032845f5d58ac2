# One floor: a static library whose headers are reachable only by those who link it.
#
# Headers are included by their path from src, as "widget/core/Paths.h". To make an include of a floor
# that is not linked fail to build, each floor has an include root of its own in the build tree, holding
# one link to its folder.

if(KESTRELBAY_SANITIZE)
    add_compile_options(-fsanitize=${KESTRELBAY_SANITIZE} -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${KESTRELBAY_SANITIZE})
endif()

# Warnings as errors for hand-written code only; generated QML code gets none of these.
# Designated initialisers name only what differs from a record's defaults, so a field that is left
# out is no mistake. Instrumented code confuses GCC's flow analysis of std::optional.
function(kestrelbay_warnings target)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Wnon-virtual-dtor
        -Woverloaded-virtual -Wno-missing-field-initializers -Werror)
    if(KESTRELBAY_SANITIZE AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_compile_options(${target} PRIVATE -Wno-maybe-uninitialized)
    endif()
endfunction()

function(kestrelbay_qt_defines target)
    target_compile_definitions(${target} PRIVATE
        QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY
        QT_NO_URL_CAST_FROM_STRING QT_NO_FOREACH QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
        QT_STRICT_ITERATORS QT_USE_QSTRINGBUILDER)
endfunction()

# kestrelbay_include_root(<target> <PUBLIC|INTERFACE> <folder below src>)
function(kestrelbay_include_root target scope folder)
    set(root "${CMAKE_BINARY_DIR}/include/${target}")
    get_filename_component(parent "${root}/${folder}" DIRECTORY)
    file(MAKE_DIRECTORY "${parent}")
    file(CREATE_LINK "${CMAKE_SOURCE_DIR}/src/${folder}" "${root}/${folder}" SYMBOLIC)
    target_include_directories(${target} ${scope} "${root}")
endfunction()

# kestrelbay_floor(<name> SOURCES <files...> LINK <public dependencies...>): the folder that calls it.
# A floor that is linked has to be defined before: it is a lower one.
function(kestrelbay_floor name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINK")
    foreach(lower IN LISTS arg_LINK)
        if(lower MATCHES "^[a-z_]+$" AND NOT TARGET ${lower})
            message(FATAL_ERROR "${name} links ${lower}, which is no lower floor")
        endif()
    endforeach()
    add_library(${name} STATIC ${arg_SOURCES})
    file(RELATIVE_PATH folder "${CMAKE_SOURCE_DIR}/src" "${CMAKE_CURRENT_SOURCE_DIR}")
    kestrelbay_include_root(${name} PUBLIC ${folder})
    target_link_libraries(${name} PUBLIC ${arg_LINK})
    kestrelbay_warnings(${name})
    kestrelbay_qt_defines(${name})
endfunction()
