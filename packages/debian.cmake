# The package for Debian: qvx with its pages, and the window with what a desktop wants to know.
set(made ${CMAKE_CURRENT_BINARY_DIR})
execute_process(COMMAND date -uRd ${QUORVANE_RELEASED} OUTPUT_VARIABLE QUORVANE_RELEASED_AT
    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
configure_file(debian/changelog.in changelog @ONLY)
configure_file(linux/quorvane.1.in quorvane.1 @ONLY)

set(format_page ${PROJECT_SOURCE_DIR}/docs/web-file-format.md)
add_custom_command(
    OUTPUT ${made}/quorvane.qvx.5
    COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/make_format_page.sh ${PROJECT_VERSION} ${QUORVANE_RELEASED}
            <${format_page} >${made}/quorvane.qvx.5
    DEPENDS ${format_page} make_format_page.sh)

set(packed)
function(add_packed name from)
    add_custom_command(OUTPUT ${made}/${name}.gz
        COMMAND gzip -9nc ${from} >${made}/${name}.gz DEPENDS ${from})
    set(packed ${packed} ${made}/${name}.gz PARENT_SCOPE)
endfunction()
set(pages ${PROJECT_BINARY_DIR}/cli/pages)
add_packed(qvx.1 ${pages}/qvx.1)
add_packed(quorvane.1 ${made}/quorvane.1)
add_packed(quorvane.qvx.5 ${made}/quorvane.qvx.5)
add_packed(changelog ${made}/changelog)
add_custom_target(package_files DEPENDS ${packed} qvx quorvane_pages)

set(doc share/doc/quorvane)
install(TARGETS qvx RUNTIME DESTINATION bin)
install(FILES ${made}/qvx.1.gz ${made}/quorvane.1.gz DESTINATION share/man/man1)
install(FILES ${made}/quorvane.qvx.5.gz DESTINATION share/man/man5)
install(FILES ${pages}/qvx.bash DESTINATION share/bash-completion/completions RENAME qvx)
install(FILES ${pages}/_qvx DESTINATION share/zsh/vendor-completions)
install(FILES ${pages}/qvx.fish DESTINATION share/fish/vendor_completions.d)
install(FILES debian/copyright ${made}/changelog.gz ${PROJECT_SOURCE_DIR}/docs/qvx.md
    ${PROJECT_SOURCE_DIR}/docs/git.md DESTINATION ${doc})
install(FILES ${PROJECT_SOURCE_DIR}/samples/guide.qvx DESTINATION ${doc}/examples)
install(FILES debian/lintian-overrides DESTINATION share/lintian/overrides RENAME quorvane)

set(icons share/icons/hicolor/scalable)
install(PROGRAMS linux/quorvane.sh DESTINATION bin RENAME quorvane)
install(FILES linux/quorvane.desktop DESTINATION share/applications)
install(FILES linux/quorvane.xml DESTINATION share/mime/packages)
install(FILES ${PROJECT_SOURCE_DIR}/resources/quorvane.svg DESTINATION ${icons}/apps)
install(FILES linux/web.svg DESTINATION ${icons}/mimetypes RENAME application-x-quorvane-web.svg)
install(FILES ${PROJECT_SOURCE_DIR}/build/windows/shell/Quorvane.exe ${scintilla_dll}
    DESTINATION lib/quorvane)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "Quorvane maintainers <maintainers@quorvane.invalid>")
set(CPACK_DEBIAN_PACKAGE_SECTION text)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "wine, bash-completion")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"A web of notes is a set of cells, each with a name and a text. Wherever the
name of a cell stands in a text, it is a link. The whole web is one file that
any editor can read.
.
qvx makes, reads, changes, reports and checks webs on the command line.
quorvane opens them in a window; it is a Windows program and needs Wine, which
qvx does not.")
