# The version stands in core/version.h alone. A change there configures anew.
set(version_header ${CMAKE_CURRENT_LIST_DIR}/../core/version.h)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${version_header})
file(STRINGS ${version_header} version_line REGEX "kVersion = ")
string(REGEX MATCH "[0-9]+\\.[0-9]+\\.[0-9]+" HOMEWARDEN_VERSION "${version_line}")
if(NOT HOMEWARDEN_VERSION)
  message(FATAL_ERROR "core/version.h names no version")
endif()
