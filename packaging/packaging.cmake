# Where everything goes on a Debian desktop, and the two packages that take it there:
#   rxq40ctl  the command-line tool and the simulated radio
#   rxq40     the window
# packaging/build.sh builds them, packaging/check.sh tries them too.
include(GNUInstallDirs)
set(package_files ${PROJECT_BINARY_DIR}/packaging)
set(maintainer "RX-Q40 Clone Utility developers <rxq40@example.invalid>")

# The day of the release: SOURCE_DATE_EPOCH, else the last change in the repository, else now.
set(release_time "$ENV{SOURCE_DATE_EPOCH}")
if(NOT release_time)
  execute_process(COMMAND git -C ${PROJECT_SOURCE_DIR} log -1 --format=%ct
    OUTPUT_VARIABLE release_time OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
endif()
if(NOT release_time)
  string(TIMESTAMP release_time "%s" UTC)
endif()
set(ENV{SOURCE_DATE_EPOCH} ${release_time})
# cpack stamps the files with it.
set(CPACK_PROJECT_CONFIG_FILE ${package_files}/release_time.cmake)
file(WRITE ${CPACK_PROJECT_CONFIG_FILE} "set(ENV{SOURCE_DATE_EPOCH} ${release_time})\n")
string(TIMESTAMP release_day "%Y-%m-%d" UTC)
string(TIMESTAMP release_date "%a, %d %b %Y %H:%M:%S +0000" UTC)

# append_wrapped(VARIABLE REST): adds REST as an entry of a Debian changelog, lines of at most 80 characters.
function(append_wrapped variable rest)
  set(indent "  * ")
  set(result "${${variable}}")
  string(LENGTH "${rest}" length)
  while(length GREATER 75)
    string(SUBSTRING "${rest}" 0 76 line)
    string(FIND "${line}" " " at REVERSE)
    if(at LESS 1)
      break()
    endif()
    string(SUBSTRING "${rest}" 0 ${at} line)
    math(EXPR at "${at} + 1")
    string(SUBSTRING "${rest}" ${at} -1 rest)
    string(APPEND result "${indent}${line}\n")
    set(indent "    ")
    string(LENGTH "${rest}" length)
  endwhile()
  if(rest)
    string(APPEND result "${indent}${rest}\n")
  endif()
  set(${variable} "${result}" PARENT_SCOPE)
endfunction()

# CHANGELOG.md in Debian's form.
function(write_debian_changelog package file)
  file(STRINGS ${PROJECT_SOURCE_DIR}/CHANGELOG.md lines ENCODING UTF-8)
  set(end "\n -- ${maintainer}  ${release_date}\n")
  set(text "")
  set(entry "")
  foreach(line IN LISTS lines)
    if(line MATCHES "^  +(.*)" AND entry)
      string(APPEND entry " ${CMAKE_MATCH_1}")
      continue()
    endif()
    append_wrapped(text "${entry}")
    set(entry "")
    if(line MATCHES "^## +([0-9][0-9.]*)")
      if(text)
        string(APPEND text "${end}\n")
      endif()
      string(APPEND text "${package} (${CMAKE_MATCH_1}) stable; urgency=medium\n\n")
    elseif(line MATCHES "^- (.*)" AND text)
      set(entry "${CMAKE_MATCH_1}")
    endif()
  endforeach()
  append_wrapped(text "${entry}")
  file(WRITE ${file} "${text}${end}")
endfunction()

find_program(GZIP gzip REQUIRED)
set(zipped_files)

# install_zipped(COMPONENT FILE FOLDER NAME): without a time stamp in it, so that builds are alike.
function(install_zipped component file folder name)
  set(zipped ${package_files}/${component}/${name}.gz)
  add_custom_command(OUTPUT ${zipped} DEPENDS ${file} VERBATIM
    COMMAND ${CMAKE_COMMAND} -E make_directory ${package_files}/${component}
    COMMAND ${GZIP} -9nc ${file} > ${zipped})
  set(zipped_files ${zipped_files} ${zipped} PARENT_SCOPE)
  install(FILES ${zipped} DESTINATION ${folder} COMPONENT ${component})
endfunction()

# install_program(COMPONENT PROGRAM): stripped in a package, as Debian strips its own.
function(install_program component program)
  install(TARGETS ${program} DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT ${component})
  set(path "\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}/${program}")
  install(CODE "if(CMAKE_INSTALL_DO_STRIP)
    execute_process(COMMAND ${CMAKE_STRIP} --remove-section=.comment --remove-section=.note \"${path}\"
      COMMAND_ERROR_IS_FATAL ANY)
  endif()" COMPONENT ${component})
endfunction()

set(packages rxq40ctl)
if(BUILD_WINDOW)
  list(APPEND packages rxq40)
endif()

# What both packages have. A package alone must do, so the documents and the rule of the cables are in both.
set(documents docs/clone-file.md docs/csv.md docs/faults.md docs/json.md docs/lists.md docs/protocol.md)
foreach(package IN LISTS packages)
  set(doc ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package})
  write_debian_changelog(${package} ${package_files}/${package}.changelog)
  install_zipped(${package} ${package_files}/${package}.changelog ${doc} changelog)
  install(FILES packaging/data/copyright ${documents} DESTINATION ${doc} COMPONENT ${package})
  install(FILES docs/examples/channels.csv docs/examples/radio.Q40
    DESTINATION ${doc}/examples COMPONENT ${package})
  install(FILES packaging/data/rxq40.rules DESTINATION lib/udev/rules.d
    RENAME 60-${package}.rules COMPONENT ${package})
endforeach()

# ---- rxq40ctl
foreach(program IN ITEMS rxq40ctl rxq40sim)
  install_program(rxq40ctl ${program})
  install_zipped(rxq40ctl ${PROJECT_SOURCE_DIR}/man/${program}.1 ${CMAKE_INSTALL_MANDIR}/man1 ${program}.1)
  install(FILES ${PROJECT_BINARY_DIR}/completions/bash/${program}
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/bash-completion/completions COMPONENT rxq40ctl)
  install(FILES ${PROJECT_BINARY_DIR}/completions/zsh/_${program}
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/zsh/vendor-completions COMPONENT rxq40ctl)
endforeach()

# ---- rxq40
if(BUILD_WINDOW)
  set(icons ${CMAKE_INSTALL_DATAROOTDIR}/icons/hicolor)
  configure_file(packaging/data/rxq40.metainfo.xml.in ${package_files}/rxq40.metainfo.xml @ONLY)
  install_program(rxq40 rxq40)
  install_zipped(rxq40 ${PROJECT_SOURCE_DIR}/man/rxq40.1 ${CMAKE_INSTALL_MANDIR}/man1 rxq40.1)
  install(FILES packaging/data/rxq40.desktop
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/applications COMPONENT rxq40)
  # Named after its component, as software centres expect it.
  install(FILES ${package_files}/rxq40.metainfo.xml RENAME invalid.example.rxq40.metainfo.xml
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/metainfo COMPONENT rxq40)
  install(FILES packaging/data/rxq40.xml
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/mime/packages COMPONENT rxq40)
  foreach(size IN ITEMS 16 24 32 48 64 128 256)
    install(FILES packaging/icons/${size}/rxq40.png
      DESTINATION ${icons}/${size}x${size}/apps COMPONENT rxq40)
    install(FILES packaging/icons/${size}/application-x-rxq40-clone.png
      DESTINATION ${icons}/${size}x${size}/mimetypes COMPONENT rxq40)
  endforeach()
  install(FILES packaging/icons/rxq40.svg DESTINATION ${icons}/scalable/apps COMPONENT rxq40)
  install(FILES packaging/icons/file.svg RENAME application-x-rxq40-clone.svg
    DESTINATION ${icons}/scalable/mimetypes COMPONENT rxq40)

  # The guide, and the pictures that it shows.
  set(doc ${CMAKE_INSTALL_DATAROOTDIR}/doc/rxq40)
  file(READ ${PROJECT_SOURCE_DIR}/docs/guide.md guide)
  string(REGEX MATCHALL "pictures/[a-z0-9-]+\\.png" pictures "${guide}")
  list(TRANSFORM pictures PREPEND docs/)
  install(FILES docs/guide.md DESTINATION ${doc} COMPONENT rxq40)
  install(FILES ${pictures} DESTINATION ${doc}/pictures COMPONENT rxq40)
endif()

add_custom_target(package_files ALL DEPENDS ${zipped_files})

# ---- the packages
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME rxq40)
# Each package has its own, as the first line of its description.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_PACKAGE_VENDOR "RX-Q40 Clone Utility developers")
set(CPACK_PACKAGE_DIRECTORY ${package_files}/debs)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL ${packages})
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEB_COMPONENT_INSTALL ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${maintainer})
set(CPACK_DEBIAN_PACKAGE_SECTION hamradio)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_RXQ40_PACKAGE_NAME rxq40)
set(CPACK_DEBIAN_RXQ40_PACKAGE_RECOMMENDS rxq40ctl)
set(CPACK_DEBIAN_RXQ40_PACKAGE_SUGGESTS qt6-wayland)
set(CPACK_DEBIAN_RXQ40_DESCRIPTION "clone utility of RX-Q40 handheld radios
Reads everything that a Korvex RX-Q40 radio holds through its serial cable,
lets you edit it in a window, and writes it back: settings, special channels
of both bands, 210 memory channels and ten auto-dialer memories.
.
The same data is kept in clone files; the channel list can be edited in
spreadsheet programs as CSV.")

set(CPACK_DEBIAN_RXQ40CTL_PACKAGE_NAME rxq40ctl)
set(CPACK_DEBIAN_RXQ40CTL_PACKAGE_SUGGESTS rxq40)
set(CPACK_DEBIAN_RXQ40CTL_DESCRIPTION "clone RX-Q40 handheld radios from the command line
Reads a Korvex RX-Q40 radio into a clone file and writes it back; shows,
checks and compares clone files; exports and imports the channel list as CSV
and the whole clone as JSON.
.
Contains rxq40sim too, a simulated radio behind a pseudo-terminal.")
include(CPack)
