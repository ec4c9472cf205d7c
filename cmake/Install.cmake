# What an engineer who loads the module into a radio needs: the library, the headers on its border, the list of symbols
# that it wants, and a package that find_package(VornipcAdapter) finds.

include(GNUInstallDirs)
set(headerDir "${CMAKE_INSTALL_INCLUDEDIR}/vornipc")
set(packageDir "${CMAKE_INSTALL_LIBDIR}/cmake/VornipcAdapter")

install(TARGETS VornipcAdapter LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}")
install(FILES "$<TARGET_FILE:radio_vocabulary>" DESTINATION "${CMAKE_INSTALL_LIBDIR}")
foreach(folder IN ITEMS src/Device/VornipcAdapter/include src/RadioVocabulary platform/include)
    install(DIRECTORY "${folder}/" DESTINATION "${headerDir}" FILES_MATCHING PATTERN "*.h")
endforeach()
install(FILES src/Device/VornipcAdapter/platform-symbols.txt DESTINATION "${CMAKE_INSTALL_DATADIR}/vornipc")

include(CMakePackageConfigHelpers)
set(VORNIPC_MODULE "${CMAKE_INSTALL_LIBDIR}/libVornipcAdapter.so")
set(VORNIPC_VOCABULARY "${CMAKE_INSTALL_LIBDIR}/libradio_vocabulary.a")
configure_package_config_file(cmake/VornipcAdapterConfig.cmake.in "${CMAKE_BINARY_DIR}/VornipcAdapterConfig.cmake"
    INSTALL_DESTINATION "${packageDir}" PATH_VARS headerDir VORNIPC_MODULE VORNIPC_VOCABULARY)
install(FILES "${CMAKE_BINARY_DIR}/VornipcAdapterConfig.cmake" DESTINATION "${packageDir}")
