# Moves what Debian has elsewhere: its zsh looks for packages' completion in a folder of their own,
# and manual pages are compressed.
set(share ${CPACK_TEMPORARY_DIRECTORY}/${CPACK_PACKAGING_INSTALL_PREFIX}/share)
file(RENAME ${share}/zsh/site-functions ${share}/zsh/vendor-completions)
execute_process(COMMAND gzip -9n ${share}/man/man1/tesselune.1 COMMAND_ERROR_IS_FATAL ANY)
