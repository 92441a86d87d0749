# Prints the fenced block number `wanted` (from 1) of language `language` in a page.
# Exits with 1 when there is none.
$0 == "```" language && !inside { inside = 1; seen += 1; next }
$0 == "```" && inside { inside = 0; next }
inside && seen == wanted { print; found = 1 }
END { exit !found }
