* Makes unicode.sav and unicode.zsav: a UTF-8 dictionary with non-Latin labels and values, long
* names with accented letters, very long strings (512 and 1024 bytes), long-string value labels
* and missing values, a numeric missing range.
* Run from this folder in a UTF-8 locale: LC_ALL=C.UTF-8 pspp unicode.sps
DATA LIST LIST /line (F8.2) Bondjoû (A20) greeting (A50).
BEGIN DATA
1 "¡Hola!" "السلام عليكم"
2 "Thai" "สวัสดี"
END DATA.
STRING Q16br9oe_Q24br9oe (A512) /StartDate (A1024) /ResponseId (A18).
COMPUTE Q16br9oe_Q24br9oe = 'ఒక తెలుగు సమాధానం'.
COMPUTE StartDate = '2020-09-11 14:38:08'.
VARIABLE LABELS greeting 'السلام عليكم' Q16br9oe_Q24br9oe 'ప్రశ్న 16: మీ సమాధానం'
  StartDate 'Start Date' ResponseId 'Response ID' Bondjoû 'Grüße, 20 bytes'.
VALUE LABELS Bondjoû 'Thai' 'สวัสดี' '¡Hola!' 'Spanish'
  /greeting 'السلام عليكم' 'Arabic'
  /line 1 'first' 2 'second'.
MISSING VALUES line (0 THRU 0.5) Bondjoû ('¡Hola!') greeting ('none').
VARIABLE LEVEL line (SCALE) Bondjoû greeting (NOMINAL).
SAVE OUTFILE='unicode.sav'.
SAVE OUTFILE='unicode.zsav' /ZCOMPRESSED.
