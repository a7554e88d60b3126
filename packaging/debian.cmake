# The Debian package. Libraries that the program links are found by dpkg-shlibdeps; what it loads while it runs stands
# in the section [run] of cmake/packages.txt, the same list that ./run installs.
file(STRINGS ${CMAKE_SOURCE_DIR}/cmake/packages.txt lines)
set(section "")
set(loaded)
foreach(line IN LISTS lines)
  if(line MATCHES "^\\[(.*)\\]$")
    set(section ${CMAKE_MATCH_1})
  elseif(section STREQUAL "run" AND line MATCHES "^[a-z0-9]")
    list(APPEND loaded ${line})
  endif()
endforeach()
list(JOIN loaded ", " loaded)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME sorvan-studio)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Sorvan Studio")
set(CPACK_PACKAGE_CONTACT "Sorvan Studio <studio@sorvan.app>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "studio for pictures, films and sound made with generative models")
set(CPACK_PACKAGE_DESCRIPTION
    "Sorvan Studio keeps generated media in an ordinary folder of plain files and
remembers beside each how it was made: prompt, model, settings, seed, cost and
what it came from. Work runs on a remote service; a paid request is never
charged twice and its result is never lost.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES TRUE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS TRUE)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "${loaded}")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
    "gnome-keyring | kwalletmanager, qt6-wayland, xdg-desktop-portal, xdg-utils, dbus-user-session | dbus-x11")
include(CPack)
