# tq_export(target objects): lets the shared library `target`, linked from the object library
# `objects`, export what src/api/exports.txt lists and nothing else, and adds the test `exports`,
# which compares the built library with the list.
find_package(Python3 REQUIRED COMPONENTS Interpreter)

function(tq_export target objects)
  set(list ${PROJECT_SOURCE_DIR}/src/api/exports.txt)
  set(tool ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/scripts/exports.py)
  set(inputs ${list} ${PROJECT_SOURCE_DIR}/scripts/exports.py)
  math(EXPR bits "8 * ${CMAKE_SIZEOF_VOID_P}")

  if(NOT WIN32)
    set(generated ${CMAKE_CURRENT_BINARY_DIR}/${target}.map)
    add_custom_command(OUTPUT ${generated} DEPENDS ${inputs}
      COMMAND ${tool} gen-version-script ${list} ${generated})
    target_link_options(${target} PRIVATE LINKER:--version-script=${generated})
    set(format elf)
  else()
    set(generated ${CMAKE_CURRENT_BINARY_DIR}/${target}.def)
    set(from --bits ${bits} --nm ${CMAKE_NM} --objects $<TARGET_OBJECTS:${objects}>)
    add_custom_command(OUTPUT ${generated} DEPENDS ${inputs} $<TARGET_OBJECTS:${objects}>
      COMMAND ${tool} gen-def ${list} ${generated} ${from}
      COMMAND_EXPAND_LISTS)
    # An empty list must not make the linker export everything.
    target_link_options(${target} PRIVATE LINKER:--exclude-all-symbols)
    if(bits EQUAL 32)
      add_custom_command(TARGET ${target} POST_BUILD
        COMMAND ${tool} gen-import-def ${list} ${target}-import.def ${from}
        COMMAND ${CMAKE_DLLTOOL} -d ${target}-import.def -l $<TARGET_LINKER_FILE:${target}>
        WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}
        COMMAND_EXPAND_LISTS)
    endif()
    set(format pe${bits})
  endif()
  target_sources(${target} PRIVATE ${generated})  # a .def among the sources goes to the linker
  set_target_properties(${target} PROPERTIES LINK_DEPENDS ${generated})

  if(TQUTIL_BUILD_TESTS)
    add_test(NAME exports
      COMMAND ${tool} check ${list} $<TARGET_FILE:${target}>
              --format ${format} --nm ${CMAKE_NM} --objdump ${CMAKE_OBJDUMP})
  endif()
endfunction()
