# What the program expects beside it: pictures, sounds, the figure that listens. The build has the
# same layout as the installed copy: bin/ and share/homewarden/.
include(GNUInstallDirs)

file(GLOB pictures CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/html/*)
file(GLOB sounds CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/sounds/*.wav)
file(GLOB characters CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/characters/*.acs)
set(share ${CMAKE_BINARY_DIR}/share/homewarden)
add_custom_target(assets ALL
  COMMAND ${CMAKE_COMMAND} -E make_directory ${share}/html
  COMMAND ${CMAKE_COMMAND} -E copy_if_different ${pictures} ${share}/html
  COMMAND ${CMAKE_COMMAND} -E copy_if_different ${sounds} ${characters} ${share}
  COMMENT "Copying pictures, sounds and characters")
add_dependencies(homewarden assets)
add_dependencies(wardengine assets)

install(TARGETS homewarden wardengine cm11-emulator)
install(FILES ${pictures} DESTINATION ${CMAKE_INSTALL_DATADIR}/homewarden/html)
install(FILES ${sounds} ${characters} DESTINATION ${CMAKE_INSTALL_DATADIR}/homewarden)
