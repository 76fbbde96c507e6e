# Installs the application folder whole under lib/, and makes a Debian package of it. On a system the folder serves
# everybody, so each user gets a copy of what the program writes to.
set(installed_folder lib/tumblewick)
set(TUMBLEWICK_RELEASE_DATE 2026-11-21)

install(TARGETS tumblewick DESTINATION ${installed_folder})
install(FILES ${help_file} ${FIREWORKS_CLIP} DESTINATION ${installed_folder})
install(FILES ${character_files} DESTINATION ${installed_folder}/characters)
# Named one by one: the folder that the build puts together may hold what its developer has played and written.
install(DIRECTORY data/Lists data/QList DESTINATION ${installed_folder})
file(WRITE ${CMAKE_BINARY_DIR}/packaging/ForEveryUser
    "Each user plays in a copy of this folder; see tumblewick(6).\n")
install(FILES ${CMAKE_BINARY_DIR}/packaging/ForEveryUser data/Set data/Lintro ${TUMBLEWICK_MENU_PICTURE} DESTINATION ${installed_folder})
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/packaging/games)
file(CREATE_LINK ../${installed_folder}/tumblewick ${CMAKE_BINARY_DIR}/packaging/games/tumblewick SYMBOLIC)
install(FILES ${CMAKE_BINARY_DIR}/packaging/games/tumblewick DESTINATION games)

# What a desktop shows of it.
foreach(name org.tumblewick.Tumblewick.metainfo.xml tumblewick.6 changelog)
  configure_file(packaging/${name} ${CMAKE_BINARY_DIR}/packaging/${name} @ONLY)
endforeach()
install(FILES packaging/tumblewick.desktop DESTINATION share/applications)
install(FILES ${CMAKE_BINARY_DIR}/packaging/org.tumblewick.Tumblewick.metainfo.xml DESTINATION share/metainfo)
set(icons)
foreach(size 16 22 24 32 48 64 128 256)
  set(icon ${CMAKE_BINARY_DIR}/packaging/icons/${size}/tumblewick.png)
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/packaging/icons/${size})
  add_custom_command(
    OUTPUT ${icon}
    COMMAND make-icon ${CMAKE_SOURCE_DIR}/resources/icon.svg ${size} transparent ${icon}
    DEPENDS make-icon ${CMAKE_SOURCE_DIR}/resources/icon.svg
    COMMENT "Rendering the icon, ${size} pixels"
    VERBATIM)
  list(APPEND icons ${icon})
  install(FILES ${icon} DESTINATION share/icons/hicolor/${size}x${size}/apps)
endforeach()
install(FILES resources/icon.svg DESTINATION share/icons/hicolor/scalable/apps RENAME tumblewick.svg)

# What a reader looks for.
find_program(GZIP gzip REQUIRED)
set(pages)
foreach(page tumblewick.6 changelog)
  set(packed ${CMAKE_BINARY_DIR}/packaging/${page}.gz)
  add_custom_command(
    OUTPUT ${packed}
    COMMAND ${GZIP} -9nkf ${CMAKE_BINARY_DIR}/packaging/${page}
    DEPENDS ${CMAKE_BINARY_DIR}/packaging/${page}
    COMMENT "Compressing ${page}"
    VERBATIM)
  list(APPEND pages ${packed})
endforeach()
install(FILES ${CMAKE_BINARY_DIR}/packaging/tumblewick.6.gz DESTINATION share/man/man6)
install(FILES ${CMAKE_BINARY_DIR}/packaging/changelog.gz packaging/copyright DESTINATION share/doc/tumblewick)
add_custom_target(package_files ALL DEPENDS ${icons} ${pages})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tumblewick)
set(CPACK_PACKAGE_CONTACT "The Tumblewick makers <makers@tumblewick.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "spelling and quiz game for children with talking characters")
set(CPACK_PACKAGE_DESCRIPTION
    "Tumblewick is a game for one to five children at one computer. Merlin, an
old wizard, Genie, a big genie, and Peedy, a cheeky parrot, stand on the
screen and speak: they dictate words to spell and read quiz questions, call
each child by name, praise, tease and keep the score. Parents and teachers
write the lists.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-comic-neue, fonts-dejavu-core, espeak-ng-data, sensible-utils")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "pocketsphinx-en-us")
include(CPack)
