# The zip, and the installer that has the same files.
add_executable(QuorvaneOpen WIN32 windows/open_web.cpp)
target_link_libraries(QuorvaneOpen PRIVATE quorvane_warnings)
target_compile_options(QuorvaneOpen PRIVATE -fno-exceptions -fno-rtti)
target_link_options(QuorvaneOpen PRIVATE -nostartfiles -Wl,-e,open_web -s)

# For readers whose lines end with CR LF.
set(texts)
function(add_text from to)
    add_custom_command(
        OUTPUT ${to}
        COMMAND sed "s/\\r*$/\\r/" ${from} > ${to}
        DEPENDS ${from}
        VERBATIM)
    set(texts ${texts} ${CMAKE_CURRENT_BINARY_DIR}/${to} PARENT_SCOPE)
endfunction()
file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/licences)
add_text(${CMAKE_CURRENT_SOURCE_DIR}/windows/readme.txt readme.txt)
add_text(${PROJECT_SOURCE_DIR}/LICENSE licences/quorvane.txt)
add_text(/usr/share/doc/mingw-w64-common/copyright licences/mingw-w64.txt)
file(GLOB licences CONFIGURE_DEPENDS licences/*.txt)
foreach(licence IN LISTS licences)
    get_filename_component(name ${licence} NAME)
    add_text(${licence} licences/${name})
endforeach()
add_custom_target(package_files DEPENDS ${texts} Quorvane QuorvaneOpen qvx)

install(TARGETS qvx RUNTIME DESTINATION .)  # what is installed as a target is stripped
install(PROGRAMS $<TARGET_FILE:Quorvane> $<TARGET_FILE:QuorvaneOpen> DESTINATION .)
install(FILES ${scintilla_dll} ${PROJECT_SOURCE_DIR}/samples/guide.qvx
              ${CMAKE_CURRENT_BINARY_DIR}/readme.txt DESTINATION .)
install(DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/licences DESTINATION .)

set(CPACK_GENERATOR ZIP NSIS)
set(CPACK_PACKAGE_FILE_NAME quorvane-${PROJECT_VERSION}-windows)
set(CPACK_MODULE_PATH ${CMAKE_CURRENT_SOURCE_DIR}/windows)  # NSIS.template.in
set(QUORVANE_ICON ${PROJECT_BINARY_DIR}/resources/quorvane.ico)
configure_file(windows/generators.cmake.in generators.cmake @ONLY)
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_CURRENT_BINARY_DIR}/generators.cmake)
