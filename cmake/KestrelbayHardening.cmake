# Makes a fault in the memory handling of what is packaged hard to turn into something worse: the
# programs read files and replies that others wrote.

if(CMAKE_BUILD_TYPE STREQUAL "Release")
    include(CheckCXXCompilerFlag)
    # Not every processor has each of them.
    foreach(flag -fstack-protector-strong -fstack-clash-protection -fcf-protection)
        string(MAKE_C_IDENTIFIER "KESTRELBAY_HAS${flag}" has)
        check_cxx_compiler_flag(${flag} ${has})
        if(${has})
            add_compile_options(${flag})
        endif()
    endforeach()
    add_compile_options(-fPIE -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
    add_link_options(-pie)
    if(NOT APPLE)
        add_link_options(-Wl,-z,relro,-z,now)
    endif()
endif()
