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
  list(FILTER sources EXCLUDE REGEX "Main\\.cpp$") # belongs to a program of the folder
  add_library(${target} STATIC ${sources})
  set_target_properties(${target} PROPERTIES LINKER_LANGUAGE CXX)

  set(layer "${PROJECT_BINARY_DIR}/layers/${suffix}")
  cmake_path(GET folder PARENT_PATH parent)
  file(MAKE_DIRECTORY "${layer}/${parent}")
  file(CREATE_LINK "${PROJECT_SOURCE_DIR}/src/${folder}" "${layer}/${folder}" SYMBOLIC)
  target_include_directories(${target} PUBLIC "${layer}")
  target_link_libraries(${target} PUBLIC ${ARG_DEPENDS} PRIVATE ${ARG_PRIVATE})
endfunction()

# inspector_screens(NAME folder [DEPENDS targets...]): the same for a folder that may see Qt. The link of X holds X/ui
# as well, but without Qt's own directories no header in there compiles; the test Source.Layers names the fault.
function(inspector_screens folder)
  inspector_folder(${ARGV})
  string(REPLACE "/" "_" suffix "${folder}")
  target_link_libraries(inspector_${suffix} PUBLIC Qt6::Widgets)
  # "signals" and "emit" are ordinary words elsewhere: Q_SIGNALS, Q_EMIT.
  target_compile_definitions(inspector_${suffix} PUBLIC QT_NO_KEYWORDS)
  set_target_properties(inspector_${suffix} PROPERTIES AUTOMOC ON)
endfunction()
