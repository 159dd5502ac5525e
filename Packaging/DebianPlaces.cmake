# Adapts the package to Debian: zsh looks for the completion of packages in vendor-completions, and
# manual pages are compressed.
set(share ${CPACK_TEMPORARY_DIRECTORY}/${CPACK_PACKAGING_INSTALL_PREFIX}/share)
file(RENAME ${share}/zsh/site-functions ${share}/zsh/vendor-completions)
file(GLOB pages ${share}/man/man1/*.1)
execute_process(COMMAND gzip -9n ${pages} COMMAND_ERROR_IS_FATAL ANY)
