# The table of keys in docs/configuration.md as the body of a manual page.
BEGIN { FS = " \\| "; section = "" }
function plain(text) { gsub(/`/, "", text); gsub(/^\| /, "", text); gsub(/ \|$/, "", text); gsub(/\\/, "\\e", text); gsub(/-/, "\\-", text); return text }
/^\| `[A-Za-z_]+` \| `/ && NF == 5 {
  if (plain($1) != section) { section = plain($1); print ".SS [" section "]" }
  print ".TP\n.B " plain($2) "\n" plain($5) "\n.br\nDefault: " plain($3) " (" plain($4) ")"
}
