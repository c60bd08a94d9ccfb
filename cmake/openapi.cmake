# The description of the interface for programs as a text of the program: it goes with it, whatever
# lies in html/. Made when CMake runs, which a change of the file brings about.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/api/openapi.json)
file(READ ${CMAKE_SOURCE_DIR}/api/openapi.json OPENAPI_TEXT)
set(openapi_source ${CMAKE_BINARY_DIR}/openapi/openapi.cpp)
configure_file(${CMAKE_SOURCE_DIR}/api/openapi.cpp.in ${openapi_source} @ONLY)
target_sources(homewarden_api PRIVATE ${openapi_source})
