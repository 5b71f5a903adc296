# Installing Quellmark: every file the program needs, each from this one
# place, so that `cmake --install` and the package put the same files in
# the same places. The programs go into bin; beside them, share/ holds the
# help pages, the data-sheet folder, the icon, the desktop entry, the
# design file type, the AppStream metadata and the manual pages. The
# window finds its help pages and icon at ../share from its own folder, so
# the build tree gets the same layout and the program runs from either.

include(GNUInstallDirs)

set(QM_SHARE_DIR ${CMAKE_INSTALL_DATADIR}/quellmark)
set(QM_DOC_DIR ${CMAKE_INSTALL_DATADIR}/doc/quellmark)

# The help pages, copied into the build tree's share/ as they install.
set(QM_HELP_SOURCE ${PROJECT_SOURCE_DIR}/help)
file(GLOB QM_HELP_PAGES CONFIGURE_DEPENDS ${QM_HELP_SOURCE}/*.html)
set(QM_BUILD_HELP_DIR ${CMAKE_BINARY_DIR}/share/quellmark/help)
set(QM_BUILD_HELP_PAGES "")
foreach(page ${QM_HELP_PAGES})
  get_filename_component(name ${page} NAME)
  add_custom_command(OUTPUT ${QM_BUILD_HELP_DIR}/${name}
    COMMAND ${CMAKE_COMMAND} -E copy_if_different ${page} ${QM_BUILD_HELP_DIR}/${name}
    DEPENDS ${page})
  list(APPEND QM_BUILD_HELP_PAGES ${QM_BUILD_HELP_DIR}/${name})
endforeach()
add_custom_target(quellmark_help ALL DEPENDS ${QM_BUILD_HELP_PAGES})

# The command line.
install(TARGETS quellmark-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${QM_BUILD_SHARE}/man/man1/quellmark-cli.1.gz
  DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
# The data sheets live beside the program's other files; the folder is
# made even when no sheet ships with it, so that a site can add its own.
install(DIRECTORY DESTINATION ${QM_SHARE_DIR}/datasheets)
if(EXISTS ${PROJECT_SOURCE_DIR}/datasheets)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/datasheets/ DESTINATION ${QM_SHARE_DIR}/datasheets)
endif()
install(FILES ${PROJECT_SOURCE_DIR}/packaging/copyright ${QM_BUILD_CHANGELOG}
  DESTINATION ${QM_DOC_DIR})

# The window and what the desktop shows of it.
if(TARGET quellmark)
  # Qt and every other library come from the system's own folders: the
  # installed program needs no search path of its own.
  set_target_properties(quellmark PROPERTIES INSTALL_RPATH "")
  install(TARGETS quellmark RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES ${QM_BUILD_SHARE}/man/man1/quellmark.1.gz
    DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES ${QM_HELP_PAGES} DESTINATION ${QM_SHARE_DIR}/help)
  install(FILES ${QM_ICON_SOURCE}
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
  foreach(size ${QM_ICON_SIZES})
    install(FILES ${QM_BUILD_ICON_DIR}/${size}x${size}/apps/quellmark.png
      DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps)
  endforeach()
  # A menu entry that opens design files, and the MIME type of *.qmf, so
  # that a file manager opens design files with Quellmark.
  install(FILES ${PROJECT_SOURCE_DIR}/data/quellmark.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${PROJECT_SOURCE_DIR}/data/quellmark-mime.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages RENAME quellmark.xml)
  install(FILES ${PROJECT_SOURCE_DIR}/data/example.quellmark.Quellmark.metainfo.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
endif()

# Refresh the desktop's caches when installing in place. A staged install
# (DESTDIR, or the package's own staging folder) leaves that to the
# system's package triggers: the caches must not become part of a package.
install(CODE [[
  if(("$ENV{DESTDIR}" STREQUAL "") AND (NOT CMAKE_INSTALL_PREFIX MATCHES "/_CPack_Packages/"))
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
