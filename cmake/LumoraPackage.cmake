# The .deb: configure with the preset "package", whose prefix is /usr, build, then run cpack.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME lumora)
set(CPACK_PACKAGE_VENDOR Tidewell)
set(CPACK_PACKAGE_CONTACT "Tidewell <packages@tidewell.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "desktop image optimizer")
set(CPACK_PACKAGE_DESCRIPTION "Drop images or whole folders on the window, the launcher or the status
item, and Lumora writes smaller ones next to them or into a folder of your
choice, as WebP, JPEG, PNG or HEIC, resized and without personal information
if you like.
The program lumora-cli does the same without a display.")
set(CPACK_PACKAGE_HOMEPAGE_URL https://tidewell.example/)
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR})
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What no program is linked to: the encoder, and the opener of links and folders.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "webp, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS qt6-wayland)
include(CPack)
