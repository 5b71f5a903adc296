# What `cmake --install` puts on a desktop system: the programs, a menu
# entry that opens design files, and the MIME type of *.qmf, so that a file
# manager opens design files with Quellmark.
include(GNUInstallDirs)

if(TARGET quellmark)
  install(TARGETS quellmark RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
install(TARGETS quellmark-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

install(FILES ${PROJECT_SOURCE_DIR}/data/quellmark.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${PROJECT_SOURCE_DIR}/data/quellmark-mime.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages RENAME quellmark.xml)

# Refresh the desktop's caches when installing in place; a staged install
# (DESTDIR) leaves that to the package's own scripts.
install(CODE [[
  if(NOT DEFINED ENV{DESTDIR} OR "$ENV{DESTDIR}" STREQUAL "")
    find_program(QM_UPDATE_MIME update-mime-database)
    find_program(QM_UPDATE_DESKTOP update-desktop-database)
    if(QM_UPDATE_MIME)
      execute_process(COMMAND ${QM_UPDATE_MIME} "${CMAKE_INSTALL_PREFIX}/share/mime"
                      OUTPUT_QUIET ERROR_QUIET)
    endif()
    if(QM_UPDATE_DESKTOP)
      execute_process(COMMAND ${QM_UPDATE_DESKTOP} "${CMAKE_INSTALL_PREFIX}/share/applications"
                      OUTPUT_QUIET ERROR_QUIET)
    endif()
  endif()
]])
