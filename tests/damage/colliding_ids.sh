# usage: colliding_ids.sh VALGRIND PROGRAM: IDs that collide without a seed take the library hardly more
# instructions than others.
set -eu
instructions() {
  "$1" --tool=callgrind --callgrind-out-file=/dev/null "$2" "$3" 2>&1 | sed -n 's/.*Collected : //p'
}
colliding=$(instructions "$1" "$2" colliding)
different=$(instructions "$1" "$2" different)
echo "colliding: $colliding, different: $different"
[ "$different" -gt 0 ] && [ $((colliding * 2)) -lt $((different * 3)) ]
