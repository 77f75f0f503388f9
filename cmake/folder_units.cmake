# The sources of a folder in one translation unit, FOLDER.cpp in the build's folder "units": most of what clang-tidy and
# the fuzz targets' compiler do is reading the headers that they have in common. So no two files of a folder may give a
# name to different things. Nothing that is installed is built of these.
# unit_of_sources(NAME TARGET SOURCE...): the unit, and its compile command with what TARGET is compiled with.
function(unit_of_sources name target)
  get_target_property(folder ${target} SOURCE_DIR)
  set(includes "")
  foreach(source ${ARGN})
    cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY ${folder})
    string(APPEND includes "#include \"${source}\"\n")
  endforeach()
  set(unit ${PROJECT_BINARY_DIR}/units/${name}.cpp)
  file(CONFIGURE OUTPUT ${unit} CONTENT "${includes}")
  add_library(unit-${name} OBJECT EXCLUDE_FROM_ALL ${unit})
  target_include_directories(unit-${name} PRIVATE $<TARGET_PROPERTY:${target},INCLUDE_DIRECTORIES>)
  target_compile_definitions(unit-${name} PRIVATE $<TARGET_PROPERTY:${target},COMPILE_DEFINITIONS>)
  set_property(GLOBAL APPEND PROPERTY NASSHARE_UNITS_${target} ${unit})
endfunction()

# One unit for each folder of the target's sources.
function(units_of_folders target)
  get_target_property(sources ${target} SOURCES)
  set(folders "")
  foreach(source ${sources})
    cmake_path(GET source PARENT_PATH folder)
    list(APPEND folders ${folder})
    list(APPEND sources_of_${folder} ${source})
  endforeach()
  list(REMOVE_DUPLICATES folders)
  foreach(folder ${folders})
    unit_of_sources(${folder} ${target} ${sources_of_${folder}})
  endforeach()
endfunction()

# One unit for all sources of each target.
function(units_of_targets)
  foreach(target ${ARGN})
    get_target_property(sources ${target} SOURCES)
    list(FILTER sources INCLUDE REGEX "\\.cpp$")
    unit_of_sources(${target} ${target} ${sources})
  endforeach()
endfunction()

# units_of(RESULT TARGET...): the files.
function(units_of result)
  set(units "")
  foreach(target ${ARGN})
    get_property(units_of_target GLOBAL PROPERTY NASSHARE_UNITS_${target})
    list(APPEND units ${units_of_target})
  endforeach()
  set(${result} ${units} PARENT_SCOPE)
endfunction()
