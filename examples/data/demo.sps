* Makes demo.sav, the bundled example of the README's first command.
* Run from this folder: pspp demo.sps
* A small survey: labels, missing values, value labels, a multiple response set,
* a variable set, attributes, a document and a weight variable.

DATA LIST LIST /id (F8.0) age (F3.0) sex (A1) income (F10.2) news1 news2 news3 (F1.0) region (A12) wt (F6.2).
BEGIN DATA
1 34 f 42000.50 1 0 1 north 1.0
2 51 m 38500.00 0 1 1 south 0.8
3 -9 f 99999.00 1 1 0 "east coast" 1.2
4 27 m 51000.25 0 0 0 west 1.0
END DATA.

VARIABLE LABELS
  id 'Respondent number'
  age 'Age in years'
  sex 'Sex of respondent'
  income 'Yearly income (EUR)'
  news1 'Reads newspapers'
  news2 'Watches TV news'
  news3 'Reads news online'
  region 'Region of residence'
  wt 'Design weight'.

VALUE LABELS
  sex 'f' 'female' 'm' 'male'
  /news1 news2 news3 0 'no' 1 'yes'
  /age -9 'refused'.

MISSING VALUES age (-9) /income (99999 THRU HIGHEST) /region ('unknown').

VARIABLE LEVEL id (NOMINAL) /age income (SCALE) /sex region (NOMINAL) /news1 news2 news3 (NOMINAL).
VARIABLE ALIGNMENT region (LEFT).
VARIABLE WIDTH region (14).

MRSETS
  /MDGROUP NAME=$news LABEL='News sources' VARIABLES=news1 news2 news3 VALUE=1 CATEGORYLABELS=VARLABELS.

VARIABLE ATTRIBUTE VARIABLES=income ATTRIBUTE=Source('tax records') Unit('EUR').
VARIABLE ATTRIBUTE VARIABLES=age ATTRIBUTE=Range[1]('18') Range[2]('99').
DATAFILE ATTRIBUTE ATTRIBUTE=Study('transspace demo') Wave('1').

DOCUMENT Example file of the transspace project, made with PSPP from demo.sps.

WEIGHT BY wt.
SAVE OUTFILE='demo.sav'.
