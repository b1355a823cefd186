# The program on a Mac: an application bundle with its icon and the update framework in it.
include(${PROJECT_SOURCE_DIR}/cmake/InfoPlist.cmake)
set(QUILLON_PLIST_ENTRIES "")
quillon_plist_entry(QUILLON_PLIST_ENTRIES SUFeedURL "${QUILLON_FEED_URL}")
quillon_plist_entry(QUILLON_PLIST_ENTRIES SUPublicEDKey "${QUILLON_FEED_PUBLIC_KEY}")
quillon_plist_entry(QUILLON_PLIST_ENTRIES HubCatalogBaseURL "${QUILLON_CATALOG_URL}")
quillon_plist_entry(QUILLON_PLIST_ENTRIES SupportURL "${QUILLON_SUPPORT_URL}")
quillon_plist_entry(QUILLON_PLIST_ENTRIES DonationURL "${QUILLON_DONATION_URL}")

add_executable(quillon MACOSX_BUNDLE MacMain.mm)
target_compile_options(quillon PRIVATE $<$<COMPILE_LANGUAGE:OBJCXX>:-fobjc-arc>)
target_link_libraries(quillon PRIVATE quillon_app quillon_macos quillon_replay quillon_views)
set_target_properties(quillon PROPERTIES
  OUTPUT_NAME Quillon
  RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}
  MACOSX_BUNDLE_INFO_PLIST ${PROJECT_SOURCE_DIR}/packaging/macos/Info.plist.in
  BUILD_RPATH "@executable_path/../Frameworks"
  INSTALL_RPATH "@executable_path/../Frameworks")

set(pictures ${CMAKE_BINARY_DIR}/packaging/macos)
set(resources $<TARGET_BUNDLE_CONTENT_DIR:quillon>/Resources)
set(frameworks $<TARGET_BUNDLE_CONTENT_DIR:quillon>/Frameworks)
add_dependencies(quillon quillon_pictures_made)
add_custom_command(TARGET quillon POST_BUILD
  COMMAND ${CMAKE_COMMAND} -E make_directory ${resources} ${frameworks}
  COMMAND ${CMAKE_COMMAND} -E copy ${pictures}/Quillon.icns ${pictures}/MenuBarLogo.png
          ${pictures}/MenuBarLogo@2x.png ${resources}
  # With its symbolic links, which its signature covers.
  COMMAND ditto ${QUILLON_UPDATE_FRAMEWORK} ${frameworks}/Sparkle.framework
  VERBATIM)
