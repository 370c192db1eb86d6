# For cases that spell out compiled files: . "$BOARDS/../bytes/functions.sh"

# word NUMBER...   each in four bytes, the least significant one first
word() {
  for number in "$@"; do
    printf "$(printf '\\%03o\\%03o\\%03o\\%03o' $((number & 255)) $((number >> 8 & 255)) \
      $((number >> 16 & 255)) $((number >> 24 & 255)))"
  done
}

# text TEXT...     each with its length before it
text() {
  for characters in "$@"; do
    word ${#characters}
    printf %s "$characters"
  done
}

# zeros COUNT
zeros() { head -c "$1" /dev/zero; }

# patch OFFSET NUMBER FILE   replaces a word of a file
patch() { word "$2" | dd of="$3" bs=1 seek=$(($1)) conv=notrunc status=none; }
