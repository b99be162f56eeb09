# cmake --install build/release --prefix …: programs, templates and what a desktop wants to know.
include(GNUInstallDirs)
set_target_properties(vesk4 vesk4-batch PROPERTIES INSTALL_RPATH_USE_LINK_PATH ON)  # the office's libraries
install(TARGETS vesk4 vesk4-batch RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES resources/Sablon.xls resources/Sablon_E.xls resources/IstSbl.mdb DESTINATION ${CMAKE_INSTALL_DATADIR}/vesk4)
install(FILES resources/vesk4.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES resources/vesk4.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES resources/logo.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps RENAME vesk4.svg)
