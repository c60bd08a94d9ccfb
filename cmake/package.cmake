# What an installed copy has beside the programs and their pages, and the Debian package of it all.
# One package: window, service and emulator always have one version.

# Texts that name the version. Manual pages are compressed without a name and a time in them, so
# that the same sources give the same bytes.
function(install_manual source)
  get_filename_component(name ${source} NAME)
  set(page ${CMAKE_BINARY_DIR}/man/${name})
  configure_file(${source} ${page} @ONLY)
  install_compressed(${page} ${CMAKE_INSTALL_MANDIR}/man1 ${name}.gz)
endfunction()

function(install_compressed source folder name)
  set(compressed ${CMAKE_BINARY_DIR}/compressed/${name})
  add_custom_command(OUTPUT ${compressed} DEPENDS ${source}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/compressed
    COMMAND gzip -9 -n -c ${source} > ${compressed} VERBATIM)
  add_custom_target(compress_${name} ALL DEPENDS ${compressed})
  install(FILES ${compressed} DESTINATION ${folder})
endfunction()

# Each program has a page in docs/man and a completion for each shell.
foreach(program homewarden wardengine cm11-emulator)
  install_manual(${CMAKE_SOURCE_DIR}/docs/man/${program}.1)
  set(completions ${CMAKE_SOURCE_DIR}/packaging/completions)
  install(FILES ${completions}/${program}.bash RENAME ${program}
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
  install(FILES ${completions}/_${program}
    DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
  install(FILES ${completions}/${program}.fish
    DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
endforeach()

install(FILES packaging/homewarden.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES packaging/example.homewarden.homewarden.metainfo.xml
  DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
foreach(size 16 24 32 48 64 128)
  install(FILES packaging/icons/${size}.png RENAME homewarden.png
    DESTINATION ${icons}/${size}x${size}/apps)
endforeach()
install(FILES ui/qt/icons/homewarden.png DESTINATION ${icons}/256x256/apps)
install(FILES docs/art/homewarden.svg DESTINATION ${icons}/scalable/apps)

file(GLOB documents CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/docs/*.md)
install(FILES ${documents} packaging/copyright packaging/README.Debian
  DESTINATION ${CMAKE_INSTALL_DOCDIR})
install_compressed(${CMAKE_SOURCE_DIR}/packaging/changelog ${CMAKE_INSTALL_DOCDIR} changelog.gz)
install(FILES packaging/lintian-overrides RENAME homewarden
  DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME homewarden)
set(CPACK_PACKAGE_VERSION ${HOMEWARDEN_VERSION})
set(CPACK_PACKAGE_CONTACT "The Homewarden developers <developers@homewarden.example>")
set(CPACK_PACKAGE_HOMEPAGE_URL "https://homewarden.example/")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "home automation for X10 power-line devices")
set(CPACK_PACKAGE_DESCRIPTION
"Homewarden switches, dims and times lamps, appliances, fans and radios that
hear X10 commands on the power line, arranged in rooms. It speaks to a CM11 or
CM12 computer interface on a serial port, shows what wall transmitters do, runs
events by the clock and by the sun, shows the house to phones, browsers and
televisions, and understands spoken commands without the network. While the
window is closed, and after you have logged out, the service wardengine goes
on with that, if you like.
.
The interface can be emulated: homewarden --demo shows a furnished house, and
cm11-emulator serves any program that can speak to the real thing.
.
Removing the package ends the services that run and leaves every house alone,
and with it each person's own switches: the unit of the service and the entry
that starts the window at logon. Without the programs these do nothing;
README.Debian says how to take them away.")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA
  ${CMAKE_SOURCE_DIR}/packaging/postinst ${CMAKE_SOURCE_DIR}/packaging/prerm)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# Found at run time, which no program's header tells: the windows' platforms (without them it does
# not start), Wayland's, what opens a web page, and the bus on which a notification area and the
# person's service manager answer; Debian's usual one brings the latter along; and the language in
# which spoken commands are understood.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
  "qt6-wayland, xdg-utils, pocketsphinx-en-us, default-dbus-session-bus | dbus-session-bus")
include(CPack)
