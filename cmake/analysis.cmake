# What clang-tidy looks at: the sources of a folder in one translation unit, since nearly all of its time goes into the
# headers that they have in common. So no two files of a folder may give a name to different things. Nothing is built of
# these; they stand in the compilation database as build/dev/analysis/NAME.cpp.
function(nasshare_analyse name target)
  get_target_property(folder ${target} SOURCE_DIR)
  set(includes "")
  foreach(source ${ARGN})
    cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY ${folder})
    string(APPEND includes "#include \"${source}\"\n")
  endforeach()
  set(unit ${PROJECT_BINARY_DIR}/analysis/${name}.cpp)
  file(CONFIGURE OUTPUT ${unit} CONTENT "${includes}")
  add_library(analyse-${name} OBJECT EXCLUDE_FROM_ALL ${unit})
  target_include_directories(analyse-${name} PRIVATE $<TARGET_PROPERTY:${target},INCLUDE_DIRECTORIES>)
  target_compile_definitions(analyse-${name} PRIVATE $<TARGET_PROPERTY:${target},COMPILE_DEFINITIONS>)
endfunction()

# The same for each folder of a target's sources.
function(nasshare_analyse_folders target)
  get_target_property(sources ${target} SOURCES)
  set(folders "")
  foreach(source ${sources})
    cmake_path(GET source PARENT_PATH folder)
    list(APPEND folders ${folder})
    list(APPEND sources_of_${folder} ${source})
  endforeach()
  list(REMOVE_DUPLICATES folders)
  foreach(folder ${folders})
    nasshare_analyse(${folder} ${target} ${sources_of_${folder}})
  endforeach()
endfunction()

# And for all sources of a target.
function(nasshare_analyse_target target)
  get_target_property(sources ${target} SOURCES)
  list(FILTER sources INCLUDE REGEX "\\.cpp$")
  nasshare_analyse(${target} ${target} ${sources})
endfunction()
