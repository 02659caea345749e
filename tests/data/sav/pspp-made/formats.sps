* Makes formats.sav: variables with the formats whose codes differ between disk and host
* (MTIME and YMDHMS: PSPP writes them as 40 and 41), plus a date, a time and a string.
* Run from this folder: pspp formats.sps
DATA LIST FREE /m y d t.
BEGIN DATA.
1 2 3 4
END DATA.
STRING s (A12).
FORMATS m (MTIME8) y (YMDHMS19) d (DATE11) t (TIME8).
VARIABLE LABELS m 'minutes' y 'stamp'.
SAVE OUTFILE='formats.sav'.
