# Puts together the folder that the program lives in: lists, characters, help and pictures beside it.
set(APPLICATION_FOLDER ${CMAKE_BINARY_DIR}/Tumblewick)

set(character_files)
foreach(name Merlin Genie Peedy)
  string(TOLOWER ${name} folder)
  set(source ${CMAKE_SOURCE_DIR}/characters/${folder})
  file(GLOB_RECURSE parts CONFIGURE_DEPENDS ${source}/*.svg ${source}/*.json)
  set(packed ${APPLICATION_FOLDER}/characters/${name}.acs)
  add_custom_command(
    OUTPUT ${packed}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${APPLICATION_FOLDER}/characters
    COMMAND pack-character --sounds ${SOUNDS_FOLDER} ${source} ${packed}
    DEPENDS pack-character ${parts} ${SOUNDS_STAMP}
    COMMENT "Packing ${name}"
    VERBATIM)
  list(APPEND character_files ${packed})
endforeach()

file(GLOB_RECURSE help_pages CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/help/*)
set(help_file ${APPLICATION_FOLDER}/TumblewickHelp.chm)
add_custom_command(
  OUTPUT ${help_file}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${APPLICATION_FOLDER}
  COMMAND pack-help ${CMAKE_SOURCE_DIR}/help ${help_file}
  DEPENDS pack-help ${help_pages}
  COMMENT "Packing the help"
  VERBATIM)

file(GLOB_RECURSE lists CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/data/Lists/* ${CMAKE_SOURCE_DIR}/data/QList/*)
set(folder_stamp ${CMAKE_BINARY_DIR}/application_folder.stamp)
add_custom_command(
  OUTPUT ${folder_stamp}
  COMMAND ${CMAKE_COMMAND} -E copy_directory ${CMAKE_SOURCE_DIR}/data/Lists ${APPLICATION_FOLDER}/Lists
  COMMAND ${CMAKE_COMMAND} -E copy_directory ${CMAKE_SOURCE_DIR}/data/QList ${APPLICATION_FOLDER}/QList
  COMMAND ${CMAKE_COMMAND} -E copy ${TUMBLEWICK_MENU_PICTURE} ${APPLICATION_FOLDER}/TWicon4.bmp
  COMMAND ${CMAKE_COMMAND} -E copy ${FIREWORKS_CLIP} ${APPLICATION_FOLDER}/fireworks.mpg
  COMMAND ${CMAKE_COMMAND} -DFROM=${CMAKE_SOURCE_DIR}/data -DTO=${APPLICATION_FOLDER}
    -P ${CMAKE_CURRENT_LIST_DIR}/FirstSettings.cmake
  COMMAND ${CMAKE_COMMAND} -E touch ${folder_stamp}
  DEPENDS ${lists} ${CMAKE_SOURCE_DIR}/data/Set ${CMAKE_SOURCE_DIR}/data/Lintro ${TUMBLEWICK_MENU_PICTURE}
    ${FIREWORKS_CLIP}
  COMMENT "Putting the application folder together"
  VERBATIM)
add_custom_target(help_file DEPENDS ${help_file})
add_custom_target(application_folder ALL DEPENDS ${character_files} ${help_file} ${folder_stamp})
add_dependencies(application_folder tumblewick help_file menu_picture sounds fireworks)
