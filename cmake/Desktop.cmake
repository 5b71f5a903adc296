# What the desktop and the manual need of the program, made at build time
# in the build tree's share/ folder, laid out as once installed: the icon at
# each size the icon theme asks for, drawn from its SVG, and the manual
# pages and the package's change log, compressed as Debian keeps them.

find_program(QM_RSVG_CONVERT rsvg-convert REQUIRED)
find_program(QM_GZIP gzip REQUIRED)

set(QM_BUILD_SHARE ${CMAKE_BINARY_DIR}/share)

# The icon: the drawing itself and a picture of it at each size.
set(QM_ICON_SOURCE ${PROJECT_SOURCE_DIR}/icons/quellmark.svg)
set(QM_ICON_SIZES 16 22 24 32 48 64 128 256)
set(QM_BUILD_ICON_DIR ${QM_BUILD_SHARE}/icons/hicolor)
set(QM_ICON_FILES ${QM_BUILD_ICON_DIR}/scalable/apps/quellmark.svg)
add_custom_command(OUTPUT ${QM_BUILD_ICON_DIR}/scalable/apps/quellmark.svg
  COMMAND ${CMAKE_COMMAND} -E copy_if_different ${QM_ICON_SOURCE}
          ${QM_BUILD_ICON_DIR}/scalable/apps/quellmark.svg
  DEPENDS ${QM_ICON_SOURCE})
foreach(size ${QM_ICON_SIZES})
  set(dir ${QM_BUILD_ICON_DIR}/${size}x${size}/apps)
  add_custom_command(OUTPUT ${dir}/quellmark.png
    COMMAND ${CMAKE_COMMAND} -E make_directory ${dir}
    COMMAND ${QM_RSVG_CONVERT} --width ${size} --height ${size}
            --output ${dir}/quellmark.png ${QM_ICON_SOURCE}
    DEPENDS ${QM_ICON_SOURCE}
    VERBATIM)
  list(APPEND QM_ICON_FILES ${dir}/quellmark.png)
endforeach()
add_custom_target(quellmark_icons ALL DEPENDS ${QM_ICON_FILES})

# gzip -9 -n: the smallest file, with no name or time in it, so that the
# same source makes the same package.
function(quellmark_compress source output)
  get_filename_component(dir ${output} DIRECTORY)
  get_filename_component(name ${output} NAME_WLE)
  add_custom_command(OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${dir}
    COMMAND ${CMAKE_COMMAND} -E copy ${source} ${dir}/${name}
    COMMAND ${QM_GZIP} -9 -n -f ${dir}/${name}
    DEPENDS ${source}
    VERBATIM)
endfunction()

set(QM_MAN_PAGES quellmark-cli.1)
if(TARGET quellmark)
  list(APPEND QM_MAN_PAGES quellmark.1)
endif()
set(QM_BUILD_MAN_PAGES "")
foreach(page ${QM_MAN_PAGES})
  quellmark_compress(${PROJECT_SOURCE_DIR}/man/${page} ${QM_BUILD_SHARE}/man/man1/${page}.gz)
  list(APPEND QM_BUILD_MAN_PAGES ${QM_BUILD_SHARE}/man/man1/${page}.gz)
endforeach()
set(QM_BUILD_CHANGELOG ${QM_BUILD_SHARE}/doc/quellmark/changelog.gz)
quellmark_compress(${PROJECT_SOURCE_DIR}/packaging/changelog ${QM_BUILD_CHANGELOG})
add_custom_target(quellmark_docs ALL DEPENDS ${QM_BUILD_MAN_PAGES} ${QM_BUILD_CHANGELOG})
