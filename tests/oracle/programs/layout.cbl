       IDENTIFICATION DIVISION.
       PROGRAM-ID. LAYOUT.
       ENVIRONMENT DIVISION.
       CONFIGURATION SECTION.
       SPECIAL-NAMES.
           UPSI-0 IS FIRST-SWITCH   ON STATUS IS SWITCH-ON
                                    OFF STATUS IS SWITCH-OFF
           CLASS VOWEL IS 'A' 'E' 'I' 'O' 'U'.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT ONE-FILE ASSIGN TO DDONE
               ORGANIZATION IS INDEXED ACCESS IS DYNAMIC
               RECORD KEY IS ONE-KEY
               ALTERNATE RECORD KEY IS ONE-OTHER WITH DUPLICATES
               FILE STATUS IS ONE-STATUS.
           SELECT TWO-FILE ASSIGN TO DDTWO
               ORGANIZATION IS RELATIVE ACCESS IS RANDOM
               RELATIVE KEY IS TWO-NUMBER FILE STATUS TWO-STATUS.
           SELECT THREE-FILE ASSIGN TO DDTHREE.
           SELECT FOUR-FILE ASSIGN TO DDFOUR.
       I-O-CONTROL.
           SAME RECORD AREA FOR THREE-FILE FOUR-FILE.
       DATA DIVISION.
       FILE SECTION.
       FD  ONE-FILE RECORD CONTAINS 90 CHARACTERS.
       01  ONE-RECORD.
           05  ONE-KEY.
               10  ONE-BRANCH      PIC 9(4).
               10  ONE-ACCOUNT     PIC 9(8).
           05  ONE-OTHER           PIC X(20).
           05  ONE-AMOUNTS OCCURS 3 TIMES INDEXED BY ONE-INDEX.
               10  ONE-AMOUNT      PIC S9(9)V99 COMP-3.
               10  ONE-FLAG        PIC X.
                   88  ONE-GOOD    VALUE 'G' 'H' THRU 'K'.
       01  ONE-SHORT               PIC X(30).
       FD  TWO-FILE RECORD IS VARYING IN SIZE FROM 5 TO 50 CHARACTERS
           DEPENDING ON TWO-LENGTH.
       01  TWO-RECORD              PIC X(50).
       FD  THREE-FILE.
       01  THREE-RECORD.
           05  THREE-A             PIC X(7).
           05  THREE-B             PIC 9(7) COMP.
       FD  FOUR-FILE.
       01  FOUR-RECORD             PIC X(20).
       WORKING-STORAGE SECTION.
       77  ONE-STATUS              PIC XX.
       77  TWO-STATUS              PIC XX.
       77  TWO-NUMBER              PIC 9(6) COMP.
       77  TWO-LENGTH              PIC 9(4) BINARY.
       78  HOW-MANY                VALUE 7.
       01  PICTURES.
           05  P01 PIC S9(7)V9(2).
           05  P02 PIC ZZ,ZZ9.99-.
           05  P03 PIC $$$,$$9.99CR.
           05  P04 PIC +(5)9.
           05  P05 PIC 9(3)P(4).
           05  P06 PIC VPP99.
           05  P07 PIC X(3)BX(2)/X.
           05  P08 PIC A(4).
           05  P09 PIC **9B99.
           05  P10 PIC S9(5) SIGN IS TRAILING SEPARATE CHARACTER.
           05  P11 PIC S9(5) SIGN IS LEADING.
           05  P12 PIC 99/99/9999.
           05  P13 PIC X(4) JUSTIFIED RIGHT.
           05  P14 PIC 9(4) BLANK WHEN ZERO.
           05  P15 PIC -9(4).9.
           05  P16 PIC N(5).
       01  USAGES.
           05  U01 PIC S9 COMP.
           05  U02 PIC S9(4) COMP-4.
           05  U03 PIC 9(5) BINARY.
           05  U04 PIC S9(9)V9 COMP.
           05  U05 PIC S9(18) COMP.
           05  U06 PIC S9(4) COMP-3.
           05  U07 PIC 9(5)V99 PACKED-DECIMAL.
           05  U08 COMP-1.
           05  U09 COMP-2.
           05  U10 PIC S9(4) COMP-5.
           05  U11 PIC 9(9) COMP-5.
           05  U12 USAGE IS INDEX.
           05  U13 PIC S9(3)P(3) COMP-3.
           05  U14 PIC SP(4)9(3) COMP.
           05  U15 USAGE POINTER.
           05  INHERITED USAGE COMP-3.
               10  U16 PIC 9(3).
               10  U17 PIC S9(6).
           05  SIGNED-GROUP SIGN LEADING SEPARATE.
               10  U18 PIC S9(3).
               10  U19 PIC S9(3) COMP.
               10  U20 PIC 9(3).
       01  REDEFINED.
           05  R-FIRST                 PIC X(12).
           05  R-SECOND REDEFINES R-FIRST.
               10  R-YEAR              PIC 9(4).
               10  R-MONTH             PIC 99.
               10  R-MORE REDEFINES R-MONTH PIC X(2).
           05  R-THIRD REDEFINES R-FIRST OCCURS 4 TIMES PIC X(3).
           05  R-LONGER REDEFINES R-FIRST PIC X(15).
           05  R-BEHIND                PIC X(2).
           66  R-PART RENAMES R-YEAR THRU R-MONTH.
           66  R-SAME RENAMES R-BEHIND.
       01  REDEFINED-AGAIN REDEFINES REDEFINED.
           05  RA-TABLE OCCURS 5 TIMES.
               10  RA-ROW OCCURS 2 TIMES.
                   15  RA-CELL         PIC X.
                   15  FILLER          PIC X.
       01  MONTHS-TEXT.
           05  FILLER PIC X(9) VALUE 'JANUARY'.
           05  FILLER PIC X(9) VALUE 'FEBRUARY'.
           05  FILLER PIC X(9) VALUE 'MARCH'.
       01  FILLER REDEFINES MONTHS-TEXT.
           05  MONTH-NAME PIC X(9) OCCURS 3 TIMES.
       01  VARIABLE-TABLE.
           05  V-COUNT                 PIC 9(3).
           05  V-ROW OCCURS 1 TO 20 TIMES DEPENDING ON V-COUNT
               ASCENDING KEY IS V-KEY INDEXED BY V-INDEX V-OTHER.
               10  V-KEY               PIC 9(5).
               10  V-TEXT              PIC X(10).
       01  ODD-LEVELS.
           03  L-A.
               07  L-B                 PIC X.
               07  L-C.
                   12  L-D             PIC XX.
               07  L-E                 PIC X(3).
           03  L-F                     PIC X.
       01  SYNCHRONIZED-ONE.
           05  S-A                     PIC X.
           05  S-B                     PIC S9(4) COMP SYNC.
           05  S-C                     PIC X.
           05  S-D                     PIC S9(8) COMP SYNCHRONIZED.
           05  S-E                     PIC X(3).
           05  S-F                     COMP-2 SYNC.
       01  OUTSIDE EXTERNAL.
           05  OUTSIDE-A               PIC X(4).
       LOCAL-STORAGE SECTION.
       01  LOCAL-A.
           05  LOCAL-B                 PIC X(6).
       LINKAGE SECTION.
       01  PARAMETER-ONE.
           05  PARAMETER-A             PIC X(8).
           05  PARAMETER-B             PIC S9(5) COMP-3.
       01  PARAMETER-TWO               PIC X(100).
       PROCEDURE DIVISION USING PARAMETER-ONE PARAMETER-TWO.
       BEGIN-HERE.
           IF SWITCH-ON AND P08 IS VOWEL MOVE 1 TO ONE-BRANCH.
           MOVE HOW-MANY TO V-COUNT.
           MOVE MONTH-NAME (2) TO P07.
           SET V-INDEX TO 1.
           SEARCH V-ROW VARYING V-INDEX
               AT END MOVE SPACES TO R-FIRST
               WHEN V-KEY (V-INDEX) = TWO-NUMBER
                   MOVE V-TEXT (V-INDEX) TO R-SAME
               WHEN V-TEXT (V-INDEX) (2:3) = P08
                   NEXT SENTENCE
           END-SEARCH.
           SEARCH ALL V-ROW
               WHEN V-KEY (V-INDEX) = 5 AND V-KEY (V-INDEX) = TWO-LENGTH
                   MOVE R-PART TO P13.
           SET ADDRESS OF PARAMETER-TWO TO U15.
           SET U15 TO ADDRESS OF PARAMETER-ONE.
           MOVE LENGTH OF PARAMETER-ONE TO U03.
           GOBACK.
