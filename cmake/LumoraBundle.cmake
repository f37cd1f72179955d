# The application directory: Contents/{MacOS,Resources,Info.plist} in the build tree.
set(LUMORA_BUNDLE_DIR ${CMAKE_BINARY_DIR}/Lumora)
set(LUMORA_PROGRAM_DIR ${LUMORA_BUNDLE_DIR}/Contents/MacOS)
file(MAKE_DIRECTORY ${LUMORA_PROGRAM_DIR} ${LUMORA_BUNDLE_DIR}/Contents/Resources)
configure_file(${CMAKE_CURRENT_SOURCE_DIR}/packaging/Info.plist.in ${LUMORA_BUNDLE_DIR}/Contents/Info.plist @ONLY)

find_program(LUMORA_CWEBP cwebp REQUIRED)
file(CREATE_LINK ${LUMORA_CWEBP} ${LUMORA_PROGRAM_DIR}/cwebp SYMBOLIC)
