# The Debian packages: cpack -G DEB in a Release build gives two packages from one run, named with the version of
# project().
#   kscfg_VERSION_ARCH.deb     the command for the shell, its manual page and completion, the systemd unit and its
#                              system user: it needs nothing but the C and C++ runtimes, for a server without a
#                              desktop
#   kslaunch_VERSION_ARCH.deb  the launcher, its sound module and cues, the help page, the menu entry, the icons,
#                              the AppStream entry and its manual page; it depends on kscfg
# The library dependencies of each come from dpkg-shlibdeps (Debian package dpkg-dev).

set(CPACK_PACKAGE_NAME kslaunch)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Kestrand")
set(CPACK_PACKAGE_CONTACT "Kestrand Launcher maintainers <bugs@kestrand.example.org>")
set(CPACK_PACKAGE_HOMEPAGE_URL "http://kestrand.example.org/kestrand")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
# Directories in the package are rwxr-xr-x whatever the umask of the build.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

if(NOT CPACK_GENERATOR)
    set(CPACK_GENERATOR DEB)
endif()
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL kscfg kslaunch)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${CPACK_PACKAGE_CONTACT}")
# The programs live in /usr/bin, where the unit and the README look for them; Debian's section "games" is for
# programs in /usr/games. The menu entry still files the launcher under Games.
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "${CPACK_PACKAGE_HOMEPAGE_URL}")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)

set(CPACK_DEBIAN_KSCFG_PACKAGE_NAME kscfg)
set(CPACK_DEBIAN_KSLAUNCH_PACKAGE_NAME kslaunch)
# The long descriptions go into the packages as they stand here, so their lines stay under 80 characters.
set(CPACK_COMPONENT_KSCFG_DESCRIPTION
    "Kestrand server configurations from the shell, and the server's unit
kscfg writes, reads, checks and converts the .cfg console script of a Quake II
server that runs the Kestrand mod, in the layout of the Kestrand Launcher, and
starts, watches, queries and stops the server: one server for each port, its
status and players, its remote console. It comes with a hardened systemd unit
template, the system user it runs the server as, and bash completion; it needs
no desktop.")
set(CPACK_COMPONENT_KSLAUNCH_DESCRIPTION
    "Kestrand Launcher: settings editor and starter for a Quake II server
KSLaunch shows the settings of a Quake II server that runs the Kestrand mod
on forms, composes the bit-mask flags from check boxes, writes and reads the
server's .cfg console script in one fixed layout, converts hand-written
configurations, opens the mod's companion text files and starts the server.")
set(CPACK_COMPONENT_KSLAUNCH_DEPENDS kscfg)
# Help > Contents and the View menu hand their files to xdg-open.
set(CPACK_DEBIAN_KSLAUNCH_PACKAGE_RECOMMENDS "xdg-utils")
# The system user of the unit is made when the package is configured, where systemd runs.
set(CPACK_DEBIAN_KSCFG_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_LIST_DIR}/../dist/debian/postinst)
set(CPACK_DEBIAN_KSCFG_PACKAGE_CONTROL_STRICT_PERMISSION ON)

include(CPack)
