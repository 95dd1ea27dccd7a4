# Run by CPack on what it is about to package: the documentation that Debian wants, as it wants it.
set(documents "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/share/doc/tidewell")
file(MAKE_DIRECTORY "${documents}")
file(COPY "${CPACK_TIDEWELL_SOURCE}/packaging/debian/copyright" DESTINATION "${documents}")
execute_process(
    COMMAND awk -f "${CPACK_TIDEWELL_SOURCE}/packaging/debian/changelog.awk"
            "${CPACK_TIDEWELL_SOURCE}/CHANGELOG.md"
    OUTPUT_FILE "${documents}/changelog" COMMAND_ERROR_IS_FATAL ANY)
execute_process(
    COMMAND gzip --best --no-name "${documents}/changelog"
            "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/share/man/man1/tidewell.1"
    COMMAND_ERROR_IS_FATAL ANY)
