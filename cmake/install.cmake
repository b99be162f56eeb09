# cmake --install build/release --prefix …: programs, templates and what a desktop wants to know.
include(GNUInstallDirs)
set_target_properties(vesk4 vesk4-batch PROPERTIES INSTALL_RPATH_USE_LINK_PATH ON)  # the office's libraries
install(TARGETS vesk4 vesk4-batch RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
# The build folder has the layout of an installed tree, so that the programs find their files in it, too.
foreach(file Sablon.xls Sablon_E.xls SablonDebi.xls SablonDebi_E.xls IstSbl.mdb)
  configure_file(resources/${file} ${CMAKE_BINARY_DIR}/share/vesk4/${file} COPYONLY)
  install(FILES resources/${file} DESTINATION ${CMAKE_INSTALL_DATADIR}/vesk4)
endforeach()
install(FILES resources/vesk4.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES resources/vesk4.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES resources/logo.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps RENAME vesk4.svg)
