# The drawings are recorded when we build: to read SVG in the running program would cost it memory
# and time.
add_executable(kestrelbay-record-icons icons/record.cpp)
target_link_libraries(kestrelbay-record-icons PRIVATE Qt6::Svg)
kestrelbay_warnings(kestrelbay-record-icons)
kestrelbay_qt_defines(kestrelbay-record-icons)
# It runs in the middle of the build.
target_compile_options(kestrelbay-record-icons PRIVATE -fno-sanitize=all)
target_link_options(kestrelbay-record-icons PRIVATE -fno-sanitize=all)

set(icons
    app-window braces chart-column check chevron-down circle-arrow-down circle-arrow-up eye-off globe
    info layout-template mouse-pointer-click panel-bottom panel-top picture-in-picture-2 pin pin-off
    power refresh-cw settings sparkles square-terminal square-x)
list(TRANSFORM icons PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/icons/" OUTPUT_VARIABLE drawings)
list(TRANSFORM drawings APPEND .svg)
list(TRANSFORM icons PREPEND "${CMAKE_CURRENT_BINARY_DIR}/icons/" OUTPUT_VARIABLE recordings)
list(TRANSFORM recordings APPEND .pic)
file(MAKE_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}/icons")
add_custom_command(OUTPUT ${recordings}
    COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen
        $<TARGET_FILE:kestrelbay-record-icons> "${CMAKE_CURRENT_BINARY_DIR}/icons" ${drawings}
    DEPENDS kestrelbay-record-icons ${drawings}
    VERBATIM)
qt_add_resources(views icons PREFIX /qt/qml/Kestrelbay
    BASE "${CMAKE_CURRENT_BINARY_DIR}" FILES ${recordings})
