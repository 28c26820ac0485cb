# Watching and reporting the demo's run, sourced by scripts/demo after demo-world.sh, whose
# scanner table it reads.
# shellcheck shell=bash disable=SC2154

# waitfordownloads DIR PID STARTED LIMIT: waits until every scanner's memory is empty (the
# program clears a scanner only once its lines are saved), the program ends, or LIMIT
# seconds have passed since STARTED (a value of $SECONDS). Says each change as it comes.
waitfordownloads() {
  local dir="$1" pid="$2" started="$3" limit="$4" i left empty
  local last=("" "" "")
  while :; do
    empty=1
    for i in 0 1 2; do
      left="$(heldrecords "$(scannerfile "$dir" "$i" state)")"
      if [ "$left" != "${last[$i]}" ]; then
        [ -n "${last[$i]}" ] && printf '  %3d s  %-9s %2s of %s records left\n' \
          $((SECONDS - started)) "${scanner_names[$i]}" "$left" "${scanner_held[$i]}"
        last[i]="$left"
      fi
      [ "$left" = 0 ] || empty=0
    done
    if [ "$empty" = 1 ]; then
      # The scanner is cleared before the program's closing lines: give it a moment.
      sleep 2
      echo "all three scanners emptied after $((SECONDS - started)) s"
      return 0
    fi
    if ! kill -0 "$pid" 2>/dev/null; then
      echo "vexalbc ended by itself after $((SECONDS - started)) s"
      return 1
    fi
    if [ $((SECONDS - started)) -ge "$limit" ]; then
      echo "time limit of $limit s reached before every scanner was emptied"
      return 1
    fi
    sleep 1
  done
}

# A profile file as text, with a header naming it.
showfile() {
  echo "----- $1"
  tr -d '\r' < "$2"
  echo
}

# The master file first, then the BAR files in number order.
showset() {
  local folder="$1" prefix="$2" f
  while IFS= read -r f; do showfile "$prefix$f" "$folder/$f"; done < <(
    shopt -s nocaseglob nullglob; cd "$folder" && printf '%s\n' barcode.* bar[0-9][0-9][0-9].*)
}

# showresults DIR: the Tarn files in the store, data held on the PC, the day's logs, the
# message boxes and whatever the program wrote to its terminal.
showresults() {
  local dir="$1" f
  echo
  echo "===== Tarn files in the store folder \\\\127.0.0.1\\tagstore ($(storefolder "$dir"))"
  showset "$(storefolder "$dir")" '\\127.0.0.1\tagstore\'
  if [ -n "$(shopt -s nocaseglob nullglob; echo "$dir"/drive_c/tarnbc/bar[0-9][0-9][0-9].ini)" ]; then
    echo "===== data held on this PC for the server (c:\\tarnbc)"
    showset "$dir/drive_c/tarnbc" 'c:\tarnbc\'
  fi
  for f in $(find "$dir" -maxdepth 2 -ipath "$dir/logs/*_log.txt"; find "$dir" -maxdepth 2 -ipath "$dir/logs/*_dat.txt"); do
    echo "===== $(basename "$(dirname "$f")")/$(basename "$f")"
    tr -d '\r' < "$f"
  done
  if [ -s "$dir/transcript.txt" ]; then
    echo "===== message boxes"
    cat "$dir/transcript.txt"
  fi
  if [ -s "$dir/vexalbc.out" ]; then
    echo "===== vexalbc's own output"
    cat "$dir/vexalbc.out"
  fi
}

# Lines saved for scanner ID in the BAR files of the store and of c:\tarnbc.
savedlines() {
  local dir="$1" id="$2"
  find "$(storefolder "$dir")" "$dir/drive_c/tarnbc" -maxdepth 1 -iname 'bar[0-9][0-9][0-9].*' -print0 |
    xargs -0 awk -v section="$(printf '[000000%s]' "$id")" '
      FNR == 1 { sub(/\r$/, ""); mine = ($0 == section) }
      mine && /^[0-9][0-9][0-9]=/ && !/^000=/ { n++ }
      END { print n + 0 }' /dev/null
}

# summary DIR: a line per scanner; fails when a scanner kept records or saved a number of
# lines other than its good scans.
summary() {
  local dir="$1" i left saved verdict status=0
  echo
  echo "===== summary"
  for i in 0 1 2; do
    left="$(heldrecords "$(scannerfile "$dir" "$i" state)")"
    saved="$(savedlines "$dir" "${scanner_ids[$i]}")"
    verdict="as expected"
    if [ "$left" != 0 ] || [ "$saved" != "${scanner_good[$i]}" ]; then
      verdict="EXPECTED ${scanner_held[$i]} sent and ${scanner_good[$i]} saved"
      status=1
    fi
    printf '%-9s ID %s: %2s records sent, %2s lines saved (%s test and %s invalid ignored): %s\n' \
      "${scanner_names[$i]}" "${scanner_ids[$i]}" $((scanner_held[i] - left)) "$saved" \
      "${scanner_test[$i]}" "${scanner_invalid[$i]}" "$verdict"
  done
  echo "install folder kept at $dir"
  return "$status"
}
