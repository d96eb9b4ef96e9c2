       IDENTIFICATION DIVISION.
       PROGRAM-ID. BKB040.
       AUTHOR. CUSTOMER SECTION, DATA CENTRE.
       DATE-WRITTEN. FEBRUARY 1987.
      *****************************************************************
      *  PRINTED STATEMENTS.
      *  READS THE CUSTOMERS IN ORDER OF NUMBER AND FOR EVERY ACCOUNT
      *  OF A CUSTOMER PRINTS THE MONTH TOTALS AND THE BALANCE.
      *
      *  87/02  FIRST VERSION
      *  90/05  AT MOST EIGHT ACCOUNTS TO A SHEET
      *  98/08  YEAR OF THE SHEET WITH CENTURY
      *****************************************************************
       ENVIRONMENT DIVISION.
       CONFIGURATION SECTION.
       SPECIAL-NAMES.
           C01 IS NEW-SHEET.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT CUSTOMER-FILE ASSIGN TO CUSTMST
               ORGANIZATION IS INDEXED
               ACCESS MODE IS SEQUENTIAL
               RECORD KEY IS CM-CUST-NO
               FILE STATUS IS WS-CUST-STATUS.
           SELECT ACCOUNT-FILE ASSIGN TO ACCTMST
               ORGANIZATION IS INDEXED
               ACCESS MODE IS RANDOM
               RECORD KEY IS AC-ACCT-NO
               FILE STATUS IS WS-ACCT-STATUS.
           SELECT PRINT-FILE ASSIGN TO STMTPRT.
       DATA DIVISION.
       FILE SECTION.
       FD  CUSTOMER-FILE.
       COPY BKCCUST REPLACING ==:TAG:== BY ==CM==.
       FD  ACCOUNT-FILE.
       COPY BKCACCT REPLACING ==:TAG:== BY ==AC==.
       FD  PRINT-FILE.
       01  PR-LINE                       PIC X(132).

       WORKING-STORAGE SECTION.
       01  WS-STATUS-AREA.
           05  WS-CUST-STATUS            PIC XX.
           05  WS-ACCT-STATUS            PIC XX.
               88  ACCT-FOUND            VALUE '00'.
       01  WS-CUST-END                   PIC X VALUE 'N'.
           88  LAST-CUSTOMER             VALUE 'Y'.
       COPY BKCDATE.
       COPY BKCMONTH.
      *    THE ACCOUNTS OF ONE SHEET
       01  ST-SHEET.
           05  ST-CUSTOMER               PIC 9(7).
           05  ST-COUNT                  PIC S9(4) COMP.
           05  ST-LINE OCCURS 1 TO 8 TIMES DEPENDING ON ST-COUNT
                   INDEXED BY ST-IX.
               10  ST-ACCOUNT-NO         PIC 9(8).
               10  ST-BALANCE            PIC S9(9)V99 COMP-3.
               10  ST-MONTH-NET          PIC S9(9)V99 COMP-3
                                         OCCURS 12 TIMES.
       77  WS-SUB                        PIC S9(4) COMP.
       77  WS-MON                        PIC S9(4) COMP.
       77  WS-SPACING                    PIC 9 VALUE 1.
       01  WS-TOTAL                      PIC S9(11)V99 COMP-3.
       01  HEAD-LINE.
           05  FILLER                    PIC X(10) VALUE SPACES.
           05  HL-NAME                   PIC X(56).
           05  FILLER                    PIC X(6)  VALUE 'SHEET '.
           05  HL-CUST-NO                PIC 9(7).
           05  FILLER                    PIC X(4)  VALUE ' OF '.
           05  HL-DATE                   PIC X(8).
           05  FILLER                    PIC X     VALUE SPACE.
           05  HL-MONTH                  PIC X(9).
           05  FILLER                    PIC X     VALUE SPACE.
           05  HL-YEAR                   PIC 9(4).
       01  DETAIL-LINE.
           05  FILLER                    PIC X(10) VALUE SPACES.
           05  DL-ACCOUNT                PIC 99B99999B9.
           05  FILLER                    PIC X(3)  VALUE SPACES.
           05  DL-TEXT                   PIC X(20).
           05  DL-AMOUNT                 PIC ZZZ,ZZZ,ZZ9.99CR.
       01  DETAIL-TEXT REDEFINES DETAIL-LINE.
           05  FILLER                    PIC X(23).
           05  DT-MONTH                  PIC X(9).
           05  FILLER                    PIC X(27).

       PROCEDURE DIVISION.
       MAIN-LINE.
           OPEN INPUT CUSTOMER-FILE ACCOUNT-FILE OUTPUT PRINT-FILE.
           ACCEPT DW-SHORT-DATE FROM DATE.
           PERFORM WINDOW-SHORT-DATE.
           MOVE DW-DD TO DW-ED-DD.
           MOVE DW-MM TO DW-ED-MM.
           MOVE DW-YY TO DW-ED-YY.
           PERFORM READ-CUSTOMER.
           PERFORM ONE-CUSTOMER UNTIL LAST-CUSTOMER.
           CLOSE CUSTOMER-FILE ACCOUNT-FILE PRINT-FILE.
           STOP RUN.

       READ-CUSTOMER.
           READ CUSTOMER-FILE
               AT END SET LAST-CUSTOMER TO TRUE
           END-READ.

       ONE-CUSTOMER.
           IF CM-ACTIVE AND CM-ACCT-COUNT > ZERO
               MOVE CM-CUST-NO TO ST-CUSTOMER
               MOVE ZERO TO ST-COUNT WS-TOTAL
               PERFORM GATHER-ACCOUNT
                   VARYING WS-SUB FROM 1 BY 1
                   UNTIL WS-SUB > CM-ACCT-COUNT OR WS-SUB > 8
               IF ST-COUNT > ZERO
                   PERFORM PRINT-SHEET
               END-IF
           END-IF.
           PERFORM READ-CUSTOMER.

       GATHER-ACCOUNT.
           MOVE CM-ACCT-ENTRY(WS-SUB) TO AC-ACCT-NO.
           READ ACCOUNT-FILE
               INVALID KEY
                   DISPLAY 'BKB040 NO ACCOUNT ' AC-ACCT-NO
                       ' OF ' CM-CUST-NO
           END-READ.
           IF ACCT-FOUND AND NOT AC-CLOSED
               ADD 1 TO ST-COUNT
               SET ST-IX TO ST-COUNT
               MOVE AC-ACCT-NO TO ST-ACCOUNT-NO(ST-IX)
               MOVE AC-BALANCE TO ST-BALANCE(ST-IX)
               ADD AC-BALANCE TO WS-TOTAL
               PERFORM VARYING WS-MON FROM 1 BY 1 UNTIL WS-MON > 12
                   SUBTRACT AC-MON-DR(WS-MON) FROM AC-MON-CR(WS-MON)
                       GIVING ST-MONTH-NET(ST-IX, WS-MON)
               END-PERFORM
           END-IF.

       PRINT-SHEET.
           PERFORM BUILD-NAME.
           MOVE ST-CUSTOMER TO HL-CUST-NO.
           MOVE DW-EDITED TO HL-DATE.
           SET MT-IX TO DW-MM.
           MOVE MT-NAME(MT-IX) TO HL-MONTH.
           MOVE DW-YEAR TO HL-YEAR.
           WRITE PR-LINE FROM HEAD-LINE AFTER ADVANCING NEW-SHEET.
           MOVE 2 TO WS-SPACING.
           PERFORM VARYING ST-IX FROM 1 BY 1 UNTIL ST-IX > ST-COUNT
               MOVE ST-ACCOUNT-NO(ST-IX) TO DL-ACCOUNT
               MOVE 'BALANCE' TO DL-TEXT
               MOVE ST-BALANCE(ST-IX) TO DL-AMOUNT
               WRITE PR-LINE FROM DETAIL-LINE
                   AFTER ADVANCING WS-SPACING LINES
               PERFORM PRINT-MONTH VARYING WS-MON FROM 1 BY 1
                   UNTIL WS-MON > DW-MM
           END-PERFORM.
           MOVE SPACES TO DETAIL-LINE.
           MOVE 'ALL ACCOUNTS' TO DL-TEXT.
           MOVE WS-TOTAL TO DL-AMOUNT.
           WRITE PR-LINE FROM DETAIL-LINE AFTER ADVANCING 3 LINES.

       PRINT-MONTH.
           MOVE SPACES TO DL-TEXT.
           MOVE MT-NAME(WS-MON) TO DT-MONTH.
           MOVE ST-MONTH-NET(ST-IX, WS-MON) TO DL-AMOUNT.
           WRITE PR-LINE FROM DETAIL-LINE AFTER ADVANCING 1 LINE.

       BUILD-NAME.
           MOVE SPACES TO HL-NAME.
           STRING CM-TITLE DELIMITED BY SPACE
                  ' ' DELIMITED BY SIZE
                  CM-FORENAMES DELIMITED BY '  '
                  ' ' DELIMITED BY SIZE
                  CM-SURNAME DELIMITED BY '  '
               INTO HL-NAME
               ON OVERFLOW
                   MOVE CM-SURNAME TO HL-NAME
           END-STRING.

       COPY BKCWINDW.
