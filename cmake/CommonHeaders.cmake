# Headers that most files include and that take longer to read than the files themselves are read once:
# common_headers(NAME [OPTIONS option...] LIBRARIES library... HEADERS header...) makes such a set, and
# target_precompile_headers(TARGET REUSE_FROM NAME) lets a target share it. Files include what they use all the same; the
# presets sanitize, coverage and fuzz build without the sets and find what is missing.
function(common_headers name)
  cmake_parse_arguments(PARSE_ARGV 1 wanted "" "" "OPTIONS;LIBRARIES;HEADERS")
  set(empty ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
  file(CONFIGURE OUTPUT ${empty} CONTENT "")
  add_library(${name} OBJECT ${empty})
  set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
  target_link_libraries(${name} PRIVATE ${wanted_LIBRARIES} tumblewick_warnings)
  target_compile_options(${name} PRIVATE ${wanted_OPTIONS})
  target_precompile_headers(${name} PRIVATE ${wanted_HEADERS})
endfunction()
