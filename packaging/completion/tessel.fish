# Completion of tessel in fish.
set -l commands host recover export lock unlock continue latest drive config verify inspect
complete -c tessel -n "not __fish_seen_subcommand_from $commands" -f -a "$commands"
complete -c tessel -n "__fish_seen_subcommand_from host" -a "create show"
complete -c tessel -n "__fish_seen_subcommand_from config" -a "list get set unset edit check"
complete -c tessel -n "__fish_seen_subcommand_from config" -l user -x -d "Whose settings"
set -l logins export lock unlock continue latest drive
complete -c tessel -n "__fish_seen_subcommand_from $logins" -l user -x -d "Login name"
complete -c tessel -n "__fish_seen_subcommand_from $logins" -l password -x -d "Password"
complete -c tessel -n "__fish_seen_subcommand_from $logins" -l password-stdin -d "Password from standard input"
complete -c tessel -n "__fish_seen_subcommand_from $commands" -l json -d "Results as JSON"
complete -c tessel -n "__fish_seen_subcommand_from $commands" -l quiet -d "Only results and failures"
complete -c tessel -n "__fish_seen_subcommand_from $logins" -l language -x -a "GER ENG" -d "Language of texts"
complete -c tessel -n "__fish_seen_subcommand_from export" -l select -x -d "Documents, CLASS:OBJECT,..."
complete -c tessel -n "__fish_seen_subcommand_from export" -l mode -x -a "mail mail-structure odette custom no-send"
complete -c tessel -n "__fish_seen_subcommand_from export" -l no-send -d "No sending"
complete -c tessel -n "__fish_seen_subcommand_from export" -l recipient -x -d "CUSTOMER:CONTACT"
complete -c tessel -n "__fish_seen_subcommand_from export" -l subject -x
complete -c tessel -n "__fish_seen_subcommand_from export" -l content -x
complete -c tessel -n "__fish_seen_subcommand_from export" -l content-file -r
complete -c tessel -n "__fish_seen_subcommand_from export" -l field -x -d "N=TEXT"
complete -c tessel -n "__fish_seen_subcommand_from export" -l folder-structure -x
complete -c tessel -n "__fish_seen_subcommand_from export recover" -l dry-run -d "Stop before the dispatch"
complete -c tessel -n "__fish_seen_subcommand_from verify" -l database -r -d "Compare recorded sums"
complete -c tessel -n "__fish_seen_subcommand_from inspect" -l html -r -d "Page for a browser"
