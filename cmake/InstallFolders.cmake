# Where an installation puts things, below its prefix: GNUInstallDirs' folders, as
# CMAKE_INSTALL_BINDIR and its like say. The program finds its files by their place relative to its
# own, so that the whole may be moved; the build tree has the same layout.

include(GNUInstallDirs)
foreach(folder IN ITEMS BINDIR DATADIR LIBEXECDIR)
    file(RELATIVE_PATH TIDEWELL_${folder}
         "${CMAKE_INSTALL_PREFIX}" "${CMAKE_INSTALL_FULL_${folder}}")
    if(TIDEWELL_${folder} MATCHES "^\\.\\.")
        message(FATAL_ERROR "CMAKE_INSTALL_${folder} does not lie below CMAKE_INSTALL_PREFIX")
    endif()
endforeach()
set(TIDEWELL_BUILT_DATA "${CMAKE_BINARY_DIR}/${TIDEWELL_DATADIR}/tidewell")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/${TIDEWELL_BINDIR}")

# As seen from the folder of the program.
file(RELATIVE_PATH TIDEWELL_DATA_FROM_PROGRAM
     "/${TIDEWELL_BINDIR}" "/${TIDEWELL_DATADIR}/tidewell")
file(RELATIVE_PATH TIDEWELL_HELPERS_FROM_PROGRAM
     "/${TIDEWELL_BINDIR}" "/${TIDEWELL_LIBEXECDIR}/tidewell")
