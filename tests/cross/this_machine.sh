# this_machine.sh TRANSCRIPT SOURCE: that the program, which other machines are held against, has
# much to say of an example and finds no difference between the queries and the read model.
set -eu
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
"$1" "$2/examples/server/server.rux" "$folder/meta" "$folder/metad" >"$folder/said"
grep -q "^gcInit 1, version 01000000, time 0$" "$folder/said"
grep -q "^gdInit 1, version 01000000, time 0$" "$folder/said"
grep -q "^ section 01000005 155: " "$folder/said"
grep -q "^ends of zeros: " "$folder/said"
! grep "model" "$folder/said"
