       IDENTIFICATION DIVISION.
       PROGRAM-ID. BKS120.
       AUTHOR. ACCOUNTS SECTION, DATA CENTRE.
       DATE-WRITTEN. MAY 1985.
      *****************************************************************
      *  DAYS BETWEEN TWO SHORT DATES (YYMMDD), 360-DAY OR TRUE YEAR.
      *
      *  85/05  FIRST VERSION, SAVINGS ONLY
      *  89/02  TRUE YEAR FOR LOANS
      *  97/09  CENTURY BY WINDOW, PIVOT 50 (SEE BKCDATE)
      *  97/10  SECOND ENTRY BKS121 FOR THOSE WHO WANT THE FULL DATE
      *****************************************************************
       ENVIRONMENT DIVISION.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       COPY BKCDATE.
       COPY BKCMONTH.
       01  WS-DAY-NUMBERS.
           05  WS-DAY-NO                 PIC S9(9) COMP
                                         OCCURS 2 TIMES.
       01  WS-WORK.
           05  WS-QUOT                   PIC S9(9) COMP.
           05  WS-REM4                   PIC S9(4) COMP.
           05  WS-REM100                 PIC S9(4) COMP.
           05  WS-REM400                 PIC S9(4) COMP.
           05  WS-YEAR-BEFORE            PIC S9(4) COMP.
           05  WS-WHICH                  PIC S9(4) COMP.
       01  WS-LEAP-SWITCH                PIC X VALUE 'N'.
           88  LEAP-YEAR                 VALUE 'Y'.

       LINKAGE SECTION.
       01  LK-FROM-DATE                  PIC 9(6).
       01  LK-TO-DATE                    PIC 9(6).
       01  LK-METHOD                     PIC X.
           88  LK-BANK-YEAR              VALUE 'B'.
           88  LK-TRUE-YEAR              VALUE 'T'.
       01  LK-DAYS                       PIC S9(5) COMP-3.
       01  LK-SHORT-DATE                 PIC X(6).
       01  LK-FULL-DATE                  PIC 9(8).

       PROCEDURE DIVISION USING LK-FROM-DATE LK-TO-DATE
                                LK-METHOD LK-DAYS.
       COUNT-DAYS.
           MOVE LK-FROM-DATE TO DW-SHORT-DATE.
           MOVE 1 TO WS-WHICH.
           PERFORM DAY-NUMBER THRU DAY-NUMBER-EXIT.
           MOVE LK-TO-DATE TO DW-SHORT-DATE.
           MOVE 2 TO WS-WHICH.
           PERFORM DAY-NUMBER THRU DAY-NUMBER-EXIT.
           SUBTRACT WS-DAY-NO(1) FROM WS-DAY-NO(2) GIVING LK-DAYS.
           GOBACK.

      *    SECOND ENTRY: A SHORT DATE WITH ITS CENTURY, ZERO IF WRONG
           ENTRY 'BKS121' USING LK-SHORT-DATE LK-FULL-DATE.
           MOVE ZERO TO LK-FULL-DATE.
           IF LK-SHORT-DATE IS NUMERIC
               MOVE LK-SHORT-DATE TO DW-SHORT-PARTS
               IF DW-MM > 0 AND NOT > 12 AND DW-DD > 0 AND < 32
                   PERFORM WINDOW-SHORT-DATE
                   MOVE DW-LONG-DATE TO LK-FULL-DATE
               END-IF
           END-IF.
           GOBACK.

       DAY-NUMBER.
           PERFORM WINDOW-SHORT-DATE.
           IF LK-BANK-YEAR
               IF DW-DD > 30
                   MOVE 30 TO DW-DD
               END-IF
               COMPUTE WS-DAY-NO(WS-WHICH) =
                   DW-YEAR * 360 + (DW-MM - 1) * 30 + DW-DD
               GO TO DAY-NUMBER-EXIT
           END-IF.
           PERFORM FIND-LEAP-YEAR.
           SUBTRACT 1 FROM DW-YEAR GIVING WS-YEAR-BEFORE.
           DIVIDE WS-YEAR-BEFORE BY 4 GIVING WS-QUOT.
           SET MT-IX TO DW-MM.
           COMPUTE WS-DAY-NO(WS-WHICH) = WS-YEAR-BEFORE * 365
               + WS-QUOT + MT-DAYS-BEFORE(MT-IX) + DW-DD.
           IF LEAP-YEAR AND DW-MM > 2
               ADD 1 TO WS-DAY-NO(WS-WHICH)
           END-IF.
       DAY-NUMBER-EXIT.
           EXIT.

       FIND-LEAP-YEAR.
           MOVE 'N' TO WS-LEAP-SWITCH.
           DIVIDE DW-YEAR BY 4 GIVING WS-QUOT REMAINDER WS-REM4.
           DIVIDE DW-YEAR BY 100 GIVING WS-QUOT REMAINDER WS-REM100.
           DIVIDE DW-YEAR BY 400 GIVING WS-QUOT REMAINDER WS-REM400.
           EVALUATE TRUE
               WHEN WS-REM400 = 0
                   SET LEAP-YEAR TO TRUE
               WHEN WS-REM100 = 0
                   CONTINUE
               WHEN WS-REM4 = 0
                   SET LEAP-YEAR TO TRUE
           END-EVALUATE.

       COPY BKCWINDW.
