# Tests of the tree itself rather than of what the library does; included by tests/CMakeLists.txt.

# Every public header compiles alone, in C and in C++.
file(GLOB public_headers RELATIVE ${PROJECT_SOURCE_DIR}/include CONFIGURE_DEPENDS
  ${PROJECT_SOURCE_DIR}/include/tqutil/*.h)
set(alone)
foreach(header ${public_headers})
  foreach(language c cpp)
    set(source ${CMAKE_CURRENT_BINARY_DIR}/alone/${header}.${language})
    # C wants a declaration in every source, and a header of macros has none.
    file(CONFIGURE OUTPUT ${source} CONTENT "#include <${header}>\ntypedef int not_empty;\n")
    list(APPEND alone ${source})
  endforeach()
endforeach()
add_library(headers_alone OBJECT ${alone})
target_link_libraries(headers_alone PRIVATE tq_options tqutil)
target_compile_options(headers_alone PRIVATE -Wpedantic)

# Two small hosts that see only the public headers and the shared library: the one build of the
# suite that goes through the export table.
set(home ${CMAKE_CURRENT_BINARY_DIR}/consumer_home)
foreach(language c cpp)
  add_executable(consumer_${language} install/consumer.${language})
  target_link_libraries(consumer_${language} PRIVATE tq_options tqutil)
  file(MAKE_DIRECTORY ${home}/${language})
  add_test(NAME consumer_${language} COMMAND consumer_${language})
  set(native ${home}/${language})
  if(WIN32)
    string(REPLACE "/" "\\" native "Z:${native}")
  endif()
  set_tests_properties(consumer_${language} PROPERTIES ENVIRONMENT "TQUTIL_HOME=${native}")
endforeach()

# The same hosts against an installed library, for one build only.
if(NOT CMAKE_CROSSCOMPILING AND CMAKE_SIZEOF_VOID_P EQUAL 8 AND NOT CMAKE_CXX_FLAGS MATCHES sanitize)
  add_test(NAME install
    COMMAND ${PROJECT_SOURCE_DIR}/scripts/check_install.sh ${PROJECT_BINARY_DIR})
endif()

# Layers and layout.
if(NOT CMAKE_CROSSCOMPILING)
  add_test(NAME layers
    COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/scripts/check_layers.py)
  # Another release of the formatter lays some lines out differently.
  find_program(TQUTIL_CLANG_FORMAT clang-format-14)
  if(TQUTIL_CLANG_FORMAT)
    add_test(NAME format COMMAND ${PROJECT_SOURCE_DIR}/scripts/check_format.sh)
  endif()
endif()
