# Everything is installed into one folder, because the program looks for its store and its logo
# beside itself. Targets that are not built are skipped.
foreach(program Zomrel zomrel-store zomrel-shop zomrel-demo)
  if(TARGET ${program})
    install(TARGETS ${program} DESTINATION .)
  endif()
endforeach()

install(FILES docs/zomrel-store.1 docs/zomrel-shop.1 DESTINATION .)

# An existing logo is not replaced, because it may be the workshop's own picture.
install(
  CODE "
  if(NOT EXISTS \"\${CMAKE_INSTALL_PREFIX}/Logo.jpg\")
    file(INSTALL \"${PROJECT_SOURCE_DIR}/data/Logo.jpg\" DESTINATION \"\${CMAKE_INSTALL_PREFIX}\")
  endif()")

# What the desktop and the manual need, for packaging: cmake --install ... --component desktop
install(
  FILES data/zomrel.desktop
  DESTINATION share/applications
  COMPONENT desktop EXCLUDE_FROM_ALL)
install(
  FILES docs/Zomrel.1 docs/zomrel-demo.1 docs/zomrel-shop.1 docs/zomrel-store.1
  DESTINATION share/man/man1
  COMPONENT desktop EXCLUDE_FROM_ALL)
install(
  FILES data/icons/zomrel.svg
  DESTINATION share/icons/hicolor/scalable/apps
  COMPONENT desktop EXCLUDE_FROM_ALL)
foreach(pixels 16 32 48 128 256)
  install(
    FILES data/icons/zomrel-${pixels}.png
    DESTINATION share/icons/hicolor/${pixels}x${pixels}/apps
    RENAME zomrel.png
    COMPONENT desktop EXCLUDE_FROM_ALL)
endforeach()

# The date is that of SOURCE_DATE_EPOCH if it is set.
string(TIMESTAMP ZOMREL_RELEASE_DATE "%Y-%m-%d" UTC)
configure_file(data/zomrel.metainfo.xml.in zomrel.metainfo.xml @ONLY)
install(
  FILES ${PROJECT_BINARY_DIR}/zomrel.metainfo.xml
  DESTINATION share/metainfo
  COMPONENT desktop EXCLUDE_FROM_ALL)
