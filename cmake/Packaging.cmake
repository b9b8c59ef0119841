# Packages made by cpack; see scripts/check-package for the Debian package.

set(TARVEL_MAINTAINER "The Tarvel authors <tarvel@tarvel.example>" CACHE STRING
  "Who answers for the packages: name and address")

set(CPACK_PACKAGE_NAME tarvel)
set(CPACK_PACKAGE_VENDOR "The Tarvel authors")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Wing morphometrics for bee breeders")
set(CPACK_PACKAGE_DESCRIPTION "Tarvel measures the fore wings of honey bees on scans. It computes the cubital index, the
hantel index and the discoidal shift, records body marks, and judges the sample by the
standard of a race. It keeps the examinations in a searchable file and prints the report.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_GENERATOR DEB)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${TARVEL_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Loaded at run time, so that the linker does not know it: the reader for TIFF.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libcups2, qt6-image-formats-plugins")
# The toolkit's own words in German and French; a font; the opening of the guide.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-translations-l10n, fonts-dejavu-core, fonts-liberation, xdg-utils, qt6-wayland")

include(CPack)
