# cpack makes two packages for Debian: the program, and the browser component, which it recommends.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tessaril)
set(CPACK_PACKAGE_VENDOR "The Tessaril authors")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each package has its own
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL program)
if(TARGET tessaril_browser)
  list(APPEND CPACK_COMPONENTS_ALL browser)
endif()

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "The Tessaril authors <authors@tessaril.example>")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SECTION web)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS OFF)

set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME tessaril)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_RECOMMENDS "tessaril-browser (= ${PROJECT_VERSION}), xchm | kchmviewer | okular-extra-backends, xdg-utils")
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SUGGESTS "hardinfo | kinfocenter | gnome-control-center")
set(CPACK_COMPONENT_PROGRAM_DESCRIPTION "finds and mends what creeps into a web site on a disk
Tessaril is for the author of a web site that lives as a tree of HTML files
on a disk. It finds dead links and missing anchors, upper-case file names,
characters and entities that should be written by name, and colours outside
the web-safe palette; it lists all links to other servers, and it searches
and replaces a text in all files. Nothing is changed before you confirm it.

The command tsl does the same without a window, for build servers.")
set(CPACK_DEBIAN_PROGRAM_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_SOURCE_DIR}/postrm)

set(CPACK_DEBIAN_BROWSER_PACKAGE_NAME tessaril-browser)
set(CPACK_DEBIAN_BROWSER_PACKAGE_DEPENDS "tessaril (= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_BROWSER_DESCRIPTION "browser component of Tessaril
With this component Tessaril shows pages, pictures and PDF files of a web
site, and the list of its links to other servers, in a browser window of its
own. Without it, files are shown in its editor only.")

include(CPack)
