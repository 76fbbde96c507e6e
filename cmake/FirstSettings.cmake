# Puts the settings of a first run into the folder TO, unless it has some: the program writes them.
foreach(name Set Lintro)
  if(NOT EXISTS ${TO}/${name})
    file(COPY ${FROM}/${name} DESTINATION ${TO})
  endif()
endforeach()
