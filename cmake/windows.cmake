# The programs load libpq from their own folder alone. The tests, and the programs that they start, share one folder, so
# that one copy is enough. Windows finds all other libraries through PATH.
if(WIN32 AND ZOMREL_BUILD_TESTS)
  set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
  file(COPY ${ZOMREL_WINDOWS_KIT}/bin/libpq.dll DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
endif()

# zomrel_windows_resource(TARGET DESCRIPTION): gives a program its icon, its version and its manifest on Windows. Does
# nothing on other systems.
function(zomrel_windows_resource target description)
  if(NOT WIN32)
    return()
  endif()
  if(NOT TARGET zomrel_icon)
    find_program(ZOMREL_ICOTOOL icotool REQUIRED)
    set(icons ${PROJECT_SOURCE_DIR}/data/icons/zomrel)
    add_custom_command(
      OUTPUT ${PROJECT_BINARY_DIR}/zomrel.ico
      COMMAND ${ZOMREL_ICOTOOL} --create --output=${PROJECT_BINARY_DIR}/zomrel.ico ${icons}-16.png ${icons}-32.png
              ${icons}-48.png --raw=${icons}-256.png
      DEPENDS ${icons}-16.png ${icons}-32.png ${icons}-48.png ${icons}-256.png
      VERBATIM)
    add_custom_target(zomrel_icon DEPENDS ${PROJECT_BINARY_DIR}/zomrel.ico)
  endif()
  set(ZOMREL_DESCRIPTION ${description})
  set(ZOMREL_PROGRAM ${target})
  string(REPLACE . , ZOMREL_VERSION_NUMBERS ${PROJECT_VERSION})
  configure_file(${PROJECT_SOURCE_DIR}/data/windows/program.rc.in ${target}.rc @ONLY)
  target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
  set_source_files_properties(
    ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc
    PROPERTIES INCLUDE_DIRECTORIES "${PROJECT_BINARY_DIR};${PROJECT_SOURCE_DIR}/data/windows"
               OBJECT_DEPENDS "${PROJECT_BINARY_DIR}/zomrel.ico;${PROJECT_SOURCE_DIR}/data/windows/program.manifest")
  add_dependencies(${target} zomrel_icon)
endfunction()
