       IDENTIFICATION DIVISION.
       PROGRAM-ID. BKB050.
       AUTHOR. LEDGER SECTION, DATA CENTRE.
       DATE-WRITTEN. JANUARY 1995.
      *****************************************************************
      *  TRIAL BALANCE BY BRANCH.
      *  THE BRANCH IS THE FIRST TWO DIGITS OF THE ACCOUNT NUMBER.
      *  THE CONTAINED PROGRAMS SHARE THE TABLE OF BRANCHES.
      *
      *  95/01  FIRST VERSION
      *  96/04  BRANCH TOTALS FOR LOANS APART
      *****************************************************************
       ENVIRONMENT DIVISION.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT MASTER-FILE ASSIGN TO ACCTMST
               ORGANIZATION IS INDEXED
               ACCESS MODE IS SEQUENTIAL
               RECORD KEY IS MA-ACCT-NO
               FILE STATUS IS WS-MASTER-STATUS.
           SELECT LIST-FILE ASSIGN TO TRIALPRT.
       DATA DIVISION.
       FILE SECTION.
       FD  MASTER-FILE.
       COPY BKCACCT REPLACING ==:TAG:== BY ==MA==.
       FD  LIST-FILE IS GLOBAL.
       01  LI-LINE                       PIC X(132).
       WORKING-STORAGE SECTION.
       01  WS-MASTER-STATUS              PIC XX.
       01  BT-BRANCH-TABLE IS GLOBAL.
           05  BT-HIGHEST                PIC S9(4) COMP VALUE 99.
           05  BT-BRANCH OCCURS 99 TIMES.
               10  BT-ACCOUNTS           PIC S9(7) COMP-3.
               10  BT-DEBTORS            PIC S9(11)V99 COMP-3.
               10  BT-CREDITORS          PIC S9(11)V99 COMP-3.
               10  BT-LOANS              PIC S9(11)V99 COMP-3.
       01  GL-PAGE-NO                    PIC 9(4) VALUE ZERO GLOBAL.
       01  WS-END                        PIC X VALUE 'N'.
       01  WS-TYPE-OF-ACCOUNT            PIC X.

       PROCEDURE DIVISION.
       TRIAL-BALANCE.
           INITIALIZE BT-BRANCH-TABLE.
           MOVE 99 TO BT-HIGHEST.
           OPEN INPUT MASTER-FILE OUTPUT LIST-FILE.
           PERFORM UNTIL WS-END = 'Y'
               READ MASTER-FILE
                   AT END MOVE 'Y' TO WS-END
                   NOT AT END PERFORM ADD-UP
               END-READ
           END-PERFORM.
           CALL 'BKB051'.
           CLOSE MASTER-FILE LIST-FILE.
           DISPLAY 'BKB050 PAGES ' GL-PAGE-NO.
           STOP RUN.

       ADD-UP.
           MOVE MA-TYPE TO WS-TYPE-OF-ACCOUNT.
           IF MA-BRANCH = ZERO
               DISPLAY 'BKB050 BRANCH ZERO ' MA-ACCT-NO
           ELSE
               CALL 'BKB052' USING MA-ACCT-NO
                                   BY CONTENT WS-TYPE-OF-ACCOUNT
                                   BY REFERENCE MA-BALANCE
           END-IF.

      *---------------------------------------------------------------
      *  PRINTS THE TABLE
      *---------------------------------------------------------------
       IDENTIFICATION DIVISION.
       PROGRAM-ID. BKB051.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  WS-BRANCH-NO                  PIC 99.
       01  WS-LINE.
           05  FILLER                    PIC X(5) VALUE SPACES.
           05  WL-BRANCH                 PIC Z9.
           05  FILLER                    PIC X(3) VALUE SPACES.
           05  WL-ACCOUNTS               PIC Z,ZZZ,ZZ9.
           05  WL-DEBTORS                PIC ZZ,ZZZ,ZZZ,ZZ9.99-.
           05  WL-CREDITORS              PIC ZZ,ZZZ,ZZZ,ZZ9.99-.
           05  WL-LOANS                  PIC ZZ,ZZZ,ZZZ,ZZ9.99-.
       PROCEDURE DIVISION.
       PRINT-TABLE.
           ADD 1 TO GL-PAGE-NO.
           MOVE 'TRIAL BALANCE BY BRANCH' TO LI-LINE.
           WRITE LI-LINE AFTER ADVANCING PAGE.
      *    BRANCH 99 IS THE HEAD OFFICE'S OWN AND NOT LISTED
           PERFORM VARYING WS-BRANCH-NO FROM 1 BY 1
                   UNTIL WS-BRANCH-NO = BT-HIGHEST
               IF BT-ACCOUNTS(WS-BRANCH-NO) > ZERO
                   MOVE WS-BRANCH-NO TO WL-BRANCH
                   MOVE BT-ACCOUNTS(WS-BRANCH-NO) TO WL-ACCOUNTS
                   MOVE BT-DEBTORS(WS-BRANCH-NO) TO WL-DEBTORS
                   MOVE BT-CREDITORS(WS-BRANCH-NO) TO WL-CREDITORS
                   MOVE BT-LOANS(WS-BRANCH-NO) TO WL-LOANS
                   WRITE LI-LINE FROM WS-LINE AFTER ADVANCING 1 LINE
               END-IF
           END-PERFORM.
       END PROGRAM BKB051.

      *---------------------------------------------------------------
      *  ADDS ONE ACCOUNT TO ITS BRANCH
      *---------------------------------------------------------------
       IDENTIFICATION DIVISION.
       PROGRAM-ID. BKB052.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  WS-NUMBER                     PIC 9(8).
       01  WS-NUMBER-X REDEFINES WS-NUMBER.
           05  WS-BRANCH                 PIC 99.
           05  WS-REST                   PIC X(6).
       LINKAGE SECTION.
       77  LK-ACCT                       PIC 9(8).
       77  LK-TYPE                       PIC X.
           88  LK-IS-LOAN                VALUE 'L'.
       77  LK-BALANCE                    PIC S9(9)V99 COMP-3.
       PROCEDURE DIVISION USING LK-ACCT LK-TYPE LK-BALANCE.
       ADD-ACCOUNT.
           MOVE LK-ACCT TO WS-NUMBER.
           ADD 1 TO BT-ACCOUNTS(WS-BRANCH).
           EVALUATE TRUE ALSO LK-IS-LOAN
               WHEN ANY ALSO TRUE
                   ADD LK-BALANCE TO BT-LOANS(WS-BRANCH)
               WHEN LK-BALANCE < ZERO ALSO FALSE
                   ADD LK-BALANCE TO BT-DEBTORS(WS-BRANCH)
               WHEN OTHER
                   ADD LK-BALANCE TO BT-CREDITORS(WS-BRANCH)
           END-EVALUATE.
           EXIT PROGRAM.
       END PROGRAM BKB052.
       END PROGRAM BKB050.
