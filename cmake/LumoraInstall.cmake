# The installed tree: the application directory under lib/lumora with links from bin, and what desktops read.
include(GNUInstallDirs)
set(applicationId example.tidewell.Lumora)
set(programDir lib/lumora/Contents/MacOS)
set(generated ${CMAKE_BINARY_DIR}/install)
set(packaging ${PROJECT_SOURCE_DIR}/packaging)

# A build without the views has only the command line.
foreach(program lumora lumora-cli)
  if(TARGET ${program})
    list(APPEND programs ${program})
  endif()
endforeach()
install(TARGETS ${programs} lumora-worker RUNTIME DESTINATION ${programDir})
install(DIRECTORY ${LUMORA_BUNDLE_DIR}/Contents/Resources DESTINATION lib/lumora/Contents)
install(FILES ${LUMORA_BUNDLE_DIR}/Contents/Info.plist DESTINATION lib/lumora/Contents)

# install_link(TARGET NAME DIRECTORY): a symbolic link in the installed tree.
function(install_link target name directory)
  file(MAKE_DIRECTORY ${generated}/links/${directory})
  file(CREATE_LINK ${target} ${generated}/links/${directory}/${name} SYMBOLIC)
  install(FILES ${generated}/links/${directory}/${name} DESTINATION ${directory})
endfunction()

foreach(program IN LISTS programs)
  install_link(../${programDir}/${program} ${program} ${CMAKE_INSTALL_BINDIR})
endforeach()
# A relative link where encoder and program share the prefix, as in a distribution's package.
cmake_path(IS_PREFIX CMAKE_INSTALL_PREFIX ${LUMORA_CWEBP} sharesPrefix)
if(sharesPrefix)
  file(RELATIVE_PATH cwebp ${CMAKE_INSTALL_PREFIX}/${programDir} ${LUMORA_CWEBP})
else()
  set(cwebp ${LUMORA_CWEBP})
endif()
install_link(${cwebp} cwebp ${programDir})

# install_compressed(FILE NAME DIRECTORY): gzip without a time stamp, so that two builds are alike.
find_program(LUMORA_GZIP gzip REQUIRED)
function(install_compressed file name directory)
  set(output ${generated}/${name}.gz)
  add_custom_command(OUTPUT ${output} DEPENDS ${file} VERBATIM
    COMMAND sh -c "\"$1\" -9nc \"$2\" > \"$3\"" sh ${LUMORA_GZIP} ${file} ${output})
  set_property(GLOBAL APPEND PROPERTY LUMORA_INSTALL_DATA ${output})
  install(FILES ${output} DESTINATION ${directory})
endfunction()

file(MAKE_DIRECTORY ${generated})
foreach(program IN LISTS programs)
  install_compressed(${PROJECT_SOURCE_DIR}/docs/${program}.1 ${program}.1 ${CMAKE_INSTALL_MANDIR}/man1)
endforeach()
configure_file(${packaging}/debian/changelog.in ${generated}/changelog @ONLY)
install_compressed(${generated}/changelog changelog ${CMAKE_INSTALL_DATADIR}/doc/lumora)
install(FILES ${packaging}/debian/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/lumora)
install(FILES ${packaging}/completions/lumora-cli.bash
  DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME lumora-cli)
install(FILES ${packaging}/completions/_lumora-cli DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
install(FILES ${packaging}/completions/lumora-cli.fish
  DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)

if(TARGET lumora)
  configure_file(${packaging}/desktop/${applicationId}.service.in ${generated}/${applicationId}.service @ONLY)
  configure_file(${packaging}/desktop/${applicationId}.metainfo.xml.in ${generated}/${applicationId}.metainfo.xml @ONLY)
  install(FILES ${packaging}/desktop/${applicationId}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${generated}/${applicationId}.service DESTINATION ${CMAKE_INSTALL_DATADIR}/dbus-1/services)
  install(FILES ${generated}/${applicationId}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
  install(FILES ${packaging}/file-managers/lumora.nemo_action DESTINATION ${CMAKE_INSTALL_DATADIR}/nemo/actions)
  install(FILES ${packaging}/file-managers/lumora-servicemenu.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/kio/servicemenus)
  install(FILES ${packaging}/file-managers/lumora-action.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/file-manager/actions)

  set(icon ${packaging}/icons/${applicationId}.svg)
  set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
  install(FILES ${icon} DESTINATION ${icons}/scalable/apps)
  find_program(LUMORA_RSVG_CONVERT rsvg-convert REQUIRED)
  foreach(size 16 24 32 48 64 128 256 512)
    set(output ${generated}/icons/${size}/${applicationId}.png)
    file(MAKE_DIRECTORY ${generated}/icons/${size})
    add_custom_command(OUTPUT ${output} DEPENDS ${icon} VERBATIM
      COMMAND ${LUMORA_RSVG_CONVERT} --width ${size} --height ${size} --output ${output} ${icon})
    set_property(GLOBAL APPEND PROPERTY LUMORA_INSTALL_DATA ${output})
    install(FILES ${output} DESTINATION ${icons}/${size}x${size}/apps)
  endforeach()
endif()

get_property(installData GLOBAL PROPERTY LUMORA_INSTALL_DATA)
add_custom_target(lumora-install-data ALL DEPENDS ${installData})
