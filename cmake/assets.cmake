# What the program expects beside it: pictures, sounds, the demo house. The build has the same
# layout as the installed copy: bin/ and share/homewarden/.
include(GNUInstallDirs)

file(GLOB pictures CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/html/*)
file(GLOB sounds CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/sounds/*.wav)
set(share ${CMAKE_BINARY_DIR}/share/homewarden)
add_custom_target(assets ALL
  COMMAND ${CMAKE_COMMAND} -E make_directory ${share}/html
  COMMAND ${CMAKE_COMMAND} -E copy_if_different ${pictures} ${share}/html
  COMMAND ${CMAKE_COMMAND} -E copy_if_different ${sounds} ${share}
  COMMENT "Copying pictures and sounds")
add_dependencies(homewarden assets)
add_dependencies(wardengine assets)

install(TARGETS homewarden wardengine cm11-emulator)
install(FILES ${pictures} DESTINATION ${CMAKE_INSTALL_DATADIR}/homewarden/html)
install(FILES ${sounds} DESTINATION ${CMAKE_INSTALL_DATADIR}/homewarden)
