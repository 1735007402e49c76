# What `make install` and the Debian package (`make package`) hold: the program and its
# companion in bin/, the resources and help in share/tallora5/ (where the program looks first,
# beside its bin/), the desktop entry and the icon in every size a desktop asks for.
include(GNUInstallDirs)

install(TARGETS tallora5 tallora5-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/resources/ DESTINATION ${CMAKE_INSTALL_DATADIR}/tallora5)
install(FILES ${PROJECT_SOURCE_DIR}/packaging/tallora5.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(DIRECTORY ${CMAKE_BINARY_DIR}/icons/hicolor DESTINATION ${CMAKE_INSTALL_DATADIR}/icons)
install(FILES ${PROJECT_SOURCE_DIR}/packaging/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/tallora5)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tallora5)
set(CPACK_PACKAGE_VENDOR "Tallora")
set(CPACK_PACKAGE_CONTACT "Tallora developers <dev@tallora.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Bookkeeping and billing for small Spanish businesses")
set(CPACK_PACKAGE_DESCRIPTION
    "Sales and purchase invoices with IVA, recargo de equivalencia and IRPF, collections and\n\
payments through cash and bank, invoices, quotes, proformas and delivery notes, and the\n\
quarterly VAT books, for shopkeepers, autonomos and small offices in Spain.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://tallora.invalid/")
# The libraries the binaries link are found by dpkg-shlibdeps (which needs dpkg-dev and
# file); what the program loads or calls at run time is named here: Qt's own Spanish and
# Catalan translations of its buttons, and the opener of the help pages in the desktop's
# browser. The X11 platform plugin comes with libqt6gui6.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-translations-l10n, xdg-utils")
include(CPack)
