# Installation and the Debian package.
#
#   cmake --install build [--prefix /usr]        (DESTDIR works as usual)
#   cd build && cpack -G DEB                     (scripts/package.sh does both checks)
#
# The installed program keeps its files per user (see src/core/ProgramFolder.h); the
# default files it copies from are built pristine into build/dist, apart from the
# program folder build/bin that a program run from the build folder writes into.
include(GNUInstallDirs)

set(QLT_DIST_DIR ${CMAKE_BINARY_DIR}/dist)
set(QLT_APP_ID org.quillotune.Quillotune)
file(GLOB QLT_DEFAULT_SOURCES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/resources/*.tsv)

add_custom_command(
  OUTPUT ${QLT_DIST_DIR}/qlt.ini ${QLT_DIST_DIR}/Caption.qlt ${QLT_DIST_DIR}/icons/VolOn.ico
         ${QLT_DIST_DIR}/icons/quillotune-48.png ${QLT_DIST_DIR}/skin/Default.scs
  COMMAND ${CMAKE_COMMAND} -E rm -rf ${QLT_DIST_DIR}
  COMMAND qlt-mkdefaults ${CMAKE_SOURCE_DIR}/resources ${QLT_DIST_DIR}
  COMMAND qlt-mkicons ${QLT_DIST_DIR}
  COMMAND qlt-mkskins ${QLT_DIST_DIR}
  COMMAND qlt-mkappicon ${CMAKE_SOURCE_DIR}/resources/desktop/quillotune.svg ${QLT_DIST_DIR}/icons
  DEPENDS qlt-mkdefaults qlt-mkicons qlt-mkskins qlt-mkappicon ${QLT_DEFAULT_SOURCES}
          ${CMAKE_SOURCE_DIR}/resources/desktop/quillotune.svg
  COMMENT "Building the shipped default files"
  VERBATIM)
add_custom_target(qlt_dist ALL DEPENDS ${QLT_DIST_DIR}/qlt.ini)

# Manual pages, made from the programs' own --help and --version.
find_program(QLT_HELP2MAN help2man)
set(QLT_MAN_PAGES)
if(QLT_HELP2MAN)
  foreach(prog quillotune quillotune-cli)
    if(prog STREQUAL "quillotune")
      set(summary "catalogue, tag and maintain a collection of audio files")
    else()
      set(summary "the logic of Quillotune without windows, for scripts")
    endif()
    set(page ${CMAKE_BINARY_DIR}/man/${prog}.1)
    add_custom_command(
      OUTPUT ${page}.gz
      COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/man
      COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen ${QLT_HELP2MAN} --no-info --no-discard-stderr
              --name=${summary} --section=1 --output=${page} $<TARGET_FILE:${prog}>
      COMMAND gzip -9nf ${page}
      DEPENDS ${prog}
      COMMENT "Writing the manual page of ${prog}"
      VERBATIM)
    list(APPEND QLT_MAN_PAGES ${page}.gz)
  endforeach()
  add_custom_target(qlt_man ALL DEPENDS ${QLT_MAN_PAGES})
  install(FILES ${QLT_MAN_PAGES} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
else()
  message(STATUS "help2man not found: no manual pages")
endif()

install(TARGETS quillotune quillotune-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY ${QLT_DIST_DIR}/ DESTINATION ${CMAKE_INSTALL_DATADIR}/quillotune PATTERN data EXCLUDE PATTERN temp EXCLUDE)
install(FILES resources/desktop/${QLT_APP_ID}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES resources/desktop/${QLT_APP_ID}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES resources/desktop/quillotune.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
foreach(size IN LISTS QLT_APP_ICON_SIZES)
  install(FILES ${QLT_DIST_DIR}/icons/quillotune-${size}.png
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps RENAME quillotune.png)
endforeach()
# The package's own documents.
add_custom_command(
  OUTPUT ${CMAKE_BINARY_DIR}/doc/changelog.gz
  COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/doc
  COMMAND gzip -9nc ${CMAKE_SOURCE_DIR}/resources/desktop/changelog > ${CMAKE_BINARY_DIR}/doc/changelog.gz
  DEPENDS ${CMAKE_SOURCE_DIR}/resources/desktop/changelog
  VERBATIM)
add_custom_target(qlt_changelog ALL DEPENDS ${CMAKE_BINARY_DIR}/doc/changelog.gz)
install(FILES resources/desktop/copyright ${CMAKE_BINARY_DIR}/doc/changelog.gz
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/quillotune)

# ---- the Debian package ----------------------------------------------------------
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quillotune)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "The Quillotune developers")
set(CPACK_PACKAGE_CONTACT "Quillotune developers <developers@quillotune.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "catalogue, tag and maintain a collection of audio files")
# The long description; CPack puts the summary above it and indents its lines.
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Quillotune keeps one big table of every audio file of a collection with its
technical data and all its tags. It finds, filters and marks songs; renames,
copies, moves and deletes files; edits tags in batches; holds the collection
against reference lists; writes M3U and PLS playlists; keeps song texts and
time-stamped lyrics with a synchronising editor; shows pictures beside and
inside songs; and plays songs for pre-listening. German and English.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Loaded at run time, so the library scan can't see them: the window system plugins,
# the picture formats and the German texts of Qt's own dialogs.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-image-formats-plugins, qt6-translations-l10n, fonts-dejavu-core")
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://quillotune.org/")
include(CPack)
