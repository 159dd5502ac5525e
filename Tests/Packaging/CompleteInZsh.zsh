# Types a line and a tab into a zsh of its own and waits for a text to appear.
#
#   zsh -f CompleteInZsh.zsh FOLDER_OF_COMPLETIONS LINE TEXT
zmodload zsh/zpty
zpty shell "zsh -f -i"
zpty -w shell "PROMPT=; fpath=(${(q)1} \$fpath); autoload -U compinit; compinit -u -D; print rea''dy"
zpty -r -m shell output '*ready*'
zpty -w -n shell "$2"$'\t'
zpty -r -m shell output "*$3*"
zpty -d shell
