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

# Desktop menu entry, for packaging: cmake --install ... --component desktop
install(
  FILES data/zomrel.desktop
  DESTINATION share/applications
  COMPONENT desktop EXCLUDE_FROM_ALL)
install(
  FILES docs/zomrel-store.1 docs/zomrel-shop.1
  DESTINATION share/man/man1
  COMPONENT desktop EXCLUDE_FROM_ALL)
foreach(pixels 16 32 48 128 256)
  install(
    FILES data/icons/zomrel-${pixels}.png
    DESTINATION share/icons/hicolor/${pixels}x${pixels}/apps
    RENAME zomrel.png
    COMPONENT desktop EXCLUDE_FROM_ALL)
endforeach()
