# The manual page and the completions, printed by the program itself from the words that --help prints, and the
# documentation of its commands, which is kept in docs/ and compared by a test.
set(help_dir ${CMAKE_CURRENT_BINARY_DIR}/help)

function(orvikdtm_generate form file)
  add_custom_command(OUTPUT ${help_dir}/${file}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${help_dir}
    COMMAND orvikdtm generate ${form} > ${help_dir}/${file}
    DEPENDS orvikdtm VERBATIM)
endfunction()

if(NOT CMAKE_CROSSCOMPILING OR CMAKE_CROSSCOMPILING_EMULATOR)
  orvikdtm_generate(man orvikdtm.1)
  orvikdtm_generate(bash orvikdtm)
  orvikdtm_generate(zsh _orvikdtm)
  add_custom_target(orvikdtm_help ALL DEPENDS ${help_dir}/orvikdtm.1 ${help_dir}/orvikdtm ${help_dir}/_orvikdtm)
  add_custom_target(update-command-docs
    COMMAND orvikdtm generate markdown > ${PROJECT_SOURCE_DIR}/docs/commands.md DEPENDS orvikdtm VERBATIM)

  if(ORVIKDTM_INSTALL)
    # zsh looks there; Debian's looks in share/zsh/vendor-completions for what packages bring.
    set(ORVIKDTM_ZSH_COMPLETIONS ${CMAKE_INSTALL_DATAROOTDIR}/zsh/site-functions CACHE STRING "Where the completion for zsh goes")
    install(FILES ${help_dir}/orvikdtm.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tool)
    install(FILES ${help_dir}/orvikdtm DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/bash-completion/completions COMPONENT tool)
    install(FILES ${help_dir}/_orvikdtm DESTINATION ${ORVIKDTM_ZSH_COMPLETIONS} COMPONENT tool)
  endif()
endif()
