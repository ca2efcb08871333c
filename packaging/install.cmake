# What `cmake --install` puts where: both programs, their man pages, completions, the desktop's entry with its icons and
# description, the licence. packaging/deb.sh makes a package of the same.
include(GNUInstallDirs)
set(FRAMEREEL_ZSH_COMPLETIONS ${CMAKE_INSTALL_DATADIR}/zsh/site-functions CACHE STRING "Where zsh looks for completions")

set(packaging ${PROJECT_SOURCE_DIR}/packaging)
install(TARGETS framereel framereel-record RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

install(FILES ${PROJECT_SOURCE_DIR}/docs/man/framereel.1 ${PROJECT_SOURCE_DIR}/docs/man/framereel-record.1
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${PROJECT_SOURCE_DIR}/docs/man/framereel-settings.5 DESTINATION ${CMAKE_INSTALL_MANDIR}/man5)

foreach(program framereel framereel-record)
  install(FILES ${packaging}/completions/framereel.bash RENAME ${program}
          DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
  install(FILES ${packaging}/completions/${program}.fish
          DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
endforeach()
install(FILES ${packaging}/completions/_framereel DESTINATION ${FRAMEREEL_ZSH_COMPLETIONS})

configure_file(${packaging}/desktop/org.framereel.Framereel.metainfo.xml.in
               ${PROJECT_BINARY_DIR}/org.framereel.Framereel.metainfo.xml @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/org.framereel.Framereel.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${packaging}/desktop/framereel.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
foreach(side 16 24 32 48 64 128 256)
  install(FILES ${packaging}/icons/framereel-${side}.png RENAME framereel.png
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${side}x${side}/apps)
endforeach()
install(FILES ${packaging}/icons/framereel.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
