# The Debian package: cpack -G DEB in a Release build gives kslaunch_3.11_<arch>.deb with the programs, the
# sounds, the help page, the menu entry, the icons, the AppStream entry and the manual pages. Its library
# dependencies come from dpkg-shlibdeps (Debian package dpkg-dev).

set(CPACK_PACKAGE_NAME kslaunch)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Kestrand")
set(CPACK_PACKAGE_CONTACT "Kestrand Launcher maintainers <bugs@kestrand.example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Kestrand Launcher: settings editor and starter for a Quake II server")
# The long description goes into the package as it stands here, so its lines stay under 80 characters.
set(CPACK_PACKAGE_DESCRIPTION
    "KSLaunch shows the settings of a Quake II server that runs the Kestrand mod
on forms, composes the bit-mask flags from check boxes, writes and reads the
server's .cfg console script in one fixed layout, converts hand-written
configurations, opens the mod's companion text files and starts the server.
The companion program kscfg does the same from the shell.")
set(CPACK_PACKAGE_HOMEPAGE_URL "http://kestrand.example.org/kestrand")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
# Directories in the package are rwxr-xr-x whatever the umask of the build.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

if(NOT CPACK_GENERATOR)
    set(CPACK_GENERATOR DEB)
endif()
set(CPACK_DEBIAN_PACKAGE_NAME kslaunch)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${CPACK_PACKAGE_CONTACT}")
# The programs live in /usr/bin, where the unit and the README look for them; Debian's section "games" is for
# programs in /usr/games. The menu entry still files the launcher under Games.
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "${CPACK_PACKAGE_HOMEPAGE_URL}")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Help > Contents and the View menu hand their files to xdg-open.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "xdg-utils")

include(CPack)
