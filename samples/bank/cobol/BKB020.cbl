       IDENTIFICATION DIVISION.
       PROGRAM-ID. BKB020.
       AUTHOR. ACCOUNTS SECTION, DATA CENTRE.
       DATE-WRITTEN. APRIL 1985.
      *****************************************************************
      *  POSTING OF THE DAY'S MOVEMENTS.
      *  THE MOVEMENTS ARE SORTED BY ACCOUNT; TRANSFERS ARE SPLIT INTO
      *  TWO MOVEMENTS ON THE WAY IN.  EVERY ACCOUNT IS READ ONCE,
      *  POSTED BY THE RULE IN BKS110 AND WRITTEN BACK.
      *
      *  85/04  FIRST VERSION, TAPE AGAINST TAPE
      *  88/10  ACCOUNT MASTER INDEXED
      *  94/06  TRANSFERS SPLIT HERE, NOT IN THE EDIT
      *****************************************************************
       ENVIRONMENT DIVISION.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT DAY-FILE ASSIGN TO TRANDAY
               FILE STATUS IS WS-DAY-STATUS.
           SELECT SORT-FILE ASSIGN TO SORTWK1.
           SELECT ACCOUNT-FILE ASSIGN TO ACCTMST
               ORGANIZATION IS INDEXED
               ACCESS MODE IS DYNAMIC
               RECORD KEY IS AM-ACCT-NO
               FILE STATUS IS WS-ACCT-STATUS.
           SELECT HISTORY-FILE ASSIGN TO TRANHIST
               FILE STATUS IS WS-HIST-STATUS.
       DATA DIVISION.
       FILE SECTION.
       FD  DAY-FILE.
       COPY BKCTRAN REPLACING ==:TAG:== BY ==DT==.
       SD  SORT-FILE.
       COPY BKCTRAN REPLACING ==:TAG:== BY ==SR==.
       FD  ACCOUNT-FILE.
       COPY BKCACCT REPLACING ==:TAG:== BY ==AM==.
       FD  HISTORY-FILE.
       01  HI-RECORD.
           05  HI-MOVEMENT               PIC X(80).
           05  HI-BALANCE-AFTER          PIC S9(9)V99 COMP-3.
           05  HI-RUN-DATE               PIC 9(6).

       WORKING-STORAGE SECTION.
       01  WS-STATUS-AREA.
           05  WS-DAY-STATUS             PIC XX.
           05  WS-ACCT-STATUS            PIC XX.
               88  ACCOUNT-MISSING       VALUE '23'.
           05  WS-HIST-STATUS            PIC XX.
       01  WS-SWITCHES.
           05  WS-DAY-END                PIC X VALUE 'N'.
               88  NO-MORE-DAY           VALUE 'Y'.
           05  WS-SORT-END               PIC X VALUE 'N'.
               88  NO-MORE-SORTED        VALUE 'Y'.
       01  WS-CURRENT-ACCT               PIC 9(8) VALUE ZERO.
       01  WS-RUN-DATE                   PIC 9(6).
       01  WS-RUN-DATE-R REDEFINES WS-RUN-DATE.
           05  WS-RUN-YY                 PIC 99.
           05  WS-RUN-MM                 PIC 99.
           05  WS-RUN-DD                 PIC 99.
       COPY BKCPOST REPLACING ==:TAG:== BY ==PP==.
       01  WS-TOTALS.
           05  WS-READ                   PIC S9(7) COMP-3 VALUE ZERO.
           05  WS-POSTED                 PIC S9(7) COMP-3 VALUE ZERO.
           05  WS-REFUSED                PIC S9(7) COMP-3 VALUE ZERO.
           05  WS-UNKNOWN                PIC S9(7) COMP-3 VALUE ZERO.
           05  WS-SUM-DEBIT              PIC S9(11)V99 COMP-3
                                         VALUE ZERO.
           05  WS-SUM-CREDIT             PIC S9(11)V99 COMP-3
                                         VALUE ZERO.
       01  WS-EDIT-SUM                   PIC Z,ZZZ,ZZZ,ZZ9.99-.

       PROCEDURE DIVISION.
       POSTING SECTION.
       POSTING-START.
           ACCEPT WS-RUN-DATE FROM DATE.
           SORT SORT-FILE
               ON ASCENDING KEY SR-ACCOUNT-NUMBER
               ON ASCENDING KEY SR-DATE SR-ENTRY-BRANCH SR-ENTRY-SEQ
               INPUT PROCEDURE IS TAKE-IN
               OUTPUT PROCEDURE IS POST-OUT.
           IF SORT-RETURN NOT = ZERO
               DISPLAY 'BKB020 SORT FAILED ' SORT-RETURN
               MOVE 16 TO RETURN-CODE
           END-IF.
           PERFORM SHOW-TOTALS.
           STOP RUN.

       SHOW-TOTALS.
           DISPLAY 'BKB020 READ ' WS-READ ' POSTED ' WS-POSTED
               ' REFUSED ' WS-REFUSED ' UNKNOWN ' WS-UNKNOWN.
           MOVE WS-SUM-DEBIT TO WS-EDIT-SUM.
           DISPLAY 'BKB020 DEBITS  ' WS-EDIT-SUM.
           MOVE WS-SUM-CREDIT TO WS-EDIT-SUM.
           DISPLAY 'BKB020 CREDITS ' WS-EDIT-SUM.

       TAKE-IN SECTION.
       TAKE-IN-START.
           OPEN INPUT DAY-FILE.
           PERFORM UNTIL NO-MORE-DAY
               READ DAY-FILE
                   AT END
                       SET NO-MORE-DAY TO TRUE
                   NOT AT END
                       ADD 1 TO WS-READ
                       PERFORM RELEASE-MOVEMENT
               END-READ
           END-PERFORM.
           CLOSE DAY-FILE.
           GO TO TAKE-IN-EXIT.
       RELEASE-MOVEMENT.
           RELEASE SR-TRAN-REC FROM DT-TRAN-REC.
           IF DT-TRANSFER
      *        THE OTHER LEG: A DEPOSIT ON THE CONTRA ACCOUNT
               MOVE DT-TRAN-REC TO SR-TRAN-REC
               MOVE DT-CONTRA-ACCT TO SR-ACCOUNT-NUMBER
               MOVE DT-ACCOUNT-NUMBER TO SR-CONTRA-ACCT
               SET SR-DEPOSIT TO TRUE
               RELEASE SR-TRAN-REC
           END-IF.
       TAKE-IN-EXIT.
           EXIT.

       POST-OUT SECTION.
       POST-OUT-START.
           OPEN I-O ACCOUNT-FILE.
           OPEN OUTPUT HISTORY-FILE.
           PERFORM RETURN-SORTED.
           PERFORM UNTIL NO-MORE-SORTED
               IF SR-ACCOUNT-NUMBER NOT = WS-CURRENT-ACCT
                   PERFORM CHANGE-ACCOUNT
               END-IF
               IF NOT ACCOUNT-MISSING
                   PERFORM POST-ONE
               ELSE
                   ADD 1 TO WS-UNKNOWN
               END-IF
               PERFORM RETURN-SORTED
           END-PERFORM.
           PERFORM WRITE-BACK.
           CLOSE ACCOUNT-FILE HISTORY-FILE.
           GO TO POST-OUT-EXIT.
       RETURN-SORTED.
           RETURN SORT-FILE
               AT END SET NO-MORE-SORTED TO TRUE
           END-RETURN.
       CHANGE-ACCOUNT.
           PERFORM WRITE-BACK.
           MOVE SR-ACCOUNT-NUMBER TO WS-CURRENT-ACCT AM-ACCT-NO.
           READ ACCOUNT-FILE KEY IS AM-ACCT-NO
               INVALID KEY
                   DISPLAY 'BKB020 NO ACCOUNT ' AM-ACCT-NO
           END-READ.
       WRITE-BACK.
           IF WS-CURRENT-ACCT NOT = ZERO AND NOT ACCOUNT-MISSING
               MOVE WS-RUN-DATE TO AM-LAST-DATE
               REWRITE AM-ACCOUNT-REC
                   INVALID KEY
                       DISPLAY 'BKB020 REWRITE ' WS-ACCT-STATUS
               END-REWRITE
           END-IF.
       POST-ONE.
           MOVE AM-ACCT-NO TO PP-ACCOUNT.
           MOVE SR-CODE TO PP-KIND.
           MOVE AM-BALANCE TO PP-OLD-BALANCE.
           MOVE SR-AMOUNT TO PP-AMOUNT.
           MOVE AM-LIMIT TO PP-LIMIT.
           MOVE SR-DATE TO PP-VALUE-DATE.
           CALL 'BKS110' USING PP-POSTING.
           MOVE PP-NEW-BALANCE TO AM-BALANCE.
           IF PP-ACCEPTED
               ADD 1 TO WS-POSTED AM-MOVEMENTS
               PERFORM MONTH-TOTALS
           ELSE
               ADD 1 TO WS-REFUSED
           END-IF.
           MOVE SR-TRAN-REC TO HI-MOVEMENT.
           MOVE AM-BALANCE TO HI-BALANCE-AFTER.
           MOVE WS-RUN-DATE TO HI-RUN-DATE.
           WRITE HI-RECORD.
       MONTH-TOTALS.
           IF PP-NEW-BALANCE < PP-OLD-BALANCE
               ADD SR-AMOUNT TO AM-MON-DR(WS-RUN-MM) WS-SUM-DEBIT
           ELSE
               ADD SR-AMOUNT TO AM-MON-CR(WS-RUN-MM) WS-SUM-CREDIT
           END-IF.
       POST-OUT-EXIT.
           EXIT.
