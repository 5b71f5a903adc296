# Installing Quellmark: the programs into bin, the help pages, the data-sheet
# folder and the icon under share. The window finds its help pages at
# ../share/quellmark/help from its own folder, so the build tree gets the
# same layout and the program runs from either.

include(GNUInstallDirs)

set(QM_HELP_SOURCE ${PROJECT_SOURCE_DIR}/help)
set(QM_SHARE_DIR ${CMAKE_INSTALL_DATADIR}/quellmark)

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

install(TARGETS quellmark-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
if(TARGET quellmark)
  # Qt and every other library come from the system's own folders: the
  # installed program needs no search path of its own.
  set_target_properties(quellmark PROPERTIES INSTALL_RPATH "")
  install(TARGETS quellmark RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
install(FILES ${QM_HELP_PAGES} DESTINATION ${QM_SHARE_DIR}/help)
# The data sheets live beside the program's other files; the folder is
# made even when no sheet ships with it, so that a user can add their own.
install(DIRECTORY DESTINATION ${QM_SHARE_DIR}/datasheets)
if(EXISTS ${PROJECT_SOURCE_DIR}/datasheets)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/datasheets/ DESTINATION ${QM_SHARE_DIR}/datasheets)
endif()
install(FILES ${PROJECT_SOURCE_DIR}/icons/quellmark.svg
  DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
