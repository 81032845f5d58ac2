# The files beside the programs, laid out in the build tree as they are when installed:
# bin/kestrelbay-launch finds its companions in ../share/kestrelbay either way.

file(GLOB companions CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/companions/*.mjs")
set(shared_files ${companions} "${CMAKE_SOURCE_DIR}/companions/i18n.json")

set(staged)
foreach(file IN LISTS shared_files)
    get_filename_component(name "${file}" NAME)
    set(copy "${CMAKE_BINARY_DIR}/share/kestrelbay/${name}")
    add_custom_command(OUTPUT "${copy}" DEPENDS "${file}"
        COMMAND ${CMAKE_COMMAND} -E copy "${file}" "${copy}")
    list(APPEND staged "${copy}")
endforeach()

set(launcher "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/kestrelbay-launch")
add_custom_command(OUTPUT "${launcher}" DEPENDS "${CMAKE_SOURCE_DIR}/packaging/kestrelbay-launch"
    COMMAND ${CMAKE_COMMAND} -E copy "${CMAKE_SOURCE_DIR}/packaging/kestrelbay-launch" "${launcher}")
add_custom_target(share ALL DEPENDS ${staged} "${launcher}")

install(PROGRAMS packaging/kestrelbay-launch TYPE BIN)
install(FILES ${shared_files} DESTINATION "${CMAKE_INSTALL_DATADIR}/kestrelbay")
