# The daily CSV of vesk4-batch, as one mawk script: the yardstick of the benchmark. Complete files of one water year
# per station, with the loggers' own extremes.
FNR == 1 {
  n = split(FILENAME, parts, "/")
  station = substr(parts[n], 5, 5)
  sum = count = last = 0
}
FNR <= 15 { next }
/^\*/ { next }
{
  first = substr($0, 1, 3)
  cm = int(substr($0, 23, 5) * 100 + 0.5)
  if (first == "Max") {
    max_time = substr($0, 16, 5)
    if (max_time == "24:00") max_time = "23:59"
    max_cm = cm
    next
  }
  if (first == "Min") {
    min_time = substr($0, 16, 5)
    if (min_time == "24:00") min_time = "23:59"
    date = substr($0, 5, 10)
    year = substr(date, 7, 4) + (substr(date, 4, 2) + 0 > 9)
    printf "%s,%d,%s,%s,%d,%s,%d,%d,%d,%d,%d\n", station, year, date, max_time, max_cm, min_time, cm,
           int(sum / last + 0.5), count, sum, last
    sum = count = last = 0
    next
  }
  minute = substr($0, 13, 2) * 60 + substr($0, 16, 2)
  if (minute == 0 || minute == 1440) minute = 1439
  sum += cm * (minute - last)
  last = minute
  count++
}
