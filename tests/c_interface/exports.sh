# The library exports what its map lists, and that is what its header declares:
#   exports.sh LIBRARY MAP HEADER
set -eu
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
sed -n 's/^ *\(ruxmeta_[a-z_]*\);$/\1/p' "$2" | sort >"$folder/listed"
nm -D --defined-only "$1" | awk '{ print $3 }' | sort >"$folder/exported"
grep -o 'ruxmeta_[a-z_]*(' "$3" | tr -d '(' | sort -u >"$folder/named"
# Comments and the example name functions, too: each is declared.
sed -n '/^RUXMETA_API/,/;/p' "$3" | grep -o 'ruxmeta_[a-z_]*(' | tr -d '(' | sort >"$folder/declared"
[ -s "$folder/listed" ]
diff "$folder/listed" "$folder/exported"
diff "$folder/listed" "$folder/declared"
diff "$folder/named" "$folder/declared"
