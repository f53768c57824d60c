# One target per folder of src/, and no folder sees a header of a folder it does not depend on.
#
# Includes start at src/ ("data/Workspace.h"). Were src/ itself an include directory, every folder could
# include every other; so each target publishes a directory of its own that holds nothing but a link to its
# folder, and receives those of the targets it names in DEPENDS.

# inspector_folder(NAME folder [DEPENDS targets...] [PRIVATE libraries...])
function(inspector_folder folder)
  cmake_parse_arguments(ARG "" "" "DEPENDS;PRIVATE" ${ARGN})
  string(REPLACE "/" "_" suffix "${folder}")
  set(target "inspector_${suffix}")
  file(GLOB sources CONFIGURE_DEPENDS
       "${PROJECT_SOURCE_DIR}/src/${folder}/*.cpp" "${PROJECT_SOURCE_DIR}/src/${folder}/*.h")
  list(FILTER sources EXCLUDE REGEX "/Main\\.cpp$") # belongs to the folder's program
  add_library(${target} STATIC ${sources})
  set_target_properties(${target} PROPERTIES LINKER_LANGUAGE CXX)

  set(layer "${PROJECT_BINARY_DIR}/layers/${suffix}")
  cmake_path(GET folder PARENT_PATH parent)
  file(MAKE_DIRECTORY "${layer}/${parent}")
  file(CREATE_LINK "${PROJECT_SOURCE_DIR}/src/${folder}" "${layer}/${folder}" SYMBOLIC)
  target_include_directories(${target} PUBLIC "${layer}")
  target_link_libraries(${target} PUBLIC ${ARG_DEPENDS} PRIVATE ${ARG_PRIVATE})
endfunction()
