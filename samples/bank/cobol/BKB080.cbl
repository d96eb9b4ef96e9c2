       IDENTIFICATION DIVISION.
       PROGRAM-ID. BKB080.
       AUTHOR. LEDGER SECTION, DATA CENTRE.
       DATE-WRITTEN. MARCH 1994.
      *****************************************************************
      *  BRINGS THE DATA BASE UP TO THE ACCOUNT MASTER AND REPORTS
      *  WHERE THE TWO DIFFERED.
      *****************************************************************
       ENVIRONMENT DIVISION.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT ACCT-FILE ASSIGN TO ACCTMST
               ORGANIZATION IS INDEXED
               ACCESS MODE IS SEQUENTIAL
               RECORD KEY IS RC-ACCT-NO
               FILE STATUS IS WS-ACCT-STATUS.
           SELECT DIFF-FILE ASSIGN TO DIFFPRT.
       DATA DIVISION.
       FILE SECTION.
       FD  ACCT-FILE.
       COPY BKCACCT REPLACING ==:TAG:== BY ==RC==.
       FD  DIFF-FILE.
       01  DF-LINE                       PIC X(80).

       WORKING-STORAGE SECTION.
       01  WS-ACCT-STATUS                PIC XX.
       01  WS-ACCT-END                   PIC X VALUE 'N'.
       01  WS-TODAY                      PIC 9(6).
       01  WS-DIFF-LINE.
           05  WD-ACCOUNT-NUMBER         PIC X(8).
           05  FILLER                    PIC X(2) VALUE SPACES.
           05  WD-MASTER                 PIC Z(9)9.99-.
           05  FILLER                    PIC X(2) VALUE SPACES.
           05  WD-BASE                   PIC Z(9)9.99-.
           05  FILLER                    PIC X(2) VALUE SPACES.
           05  WD-TEXT                   PIC X(30).
       01  WS-DB-BALANCE                 PIC S9(9)V99 COMP-3.
       01  WS-DB-MOVED                   PIC X(6).
       01  WS-NULLS.
           05  WS-MOVED-NULL             PIC S9(4) COMP.
       01  WS-SUMS.
           05  WS-SUM-MASTER             PIC S9(11)V99 COMP-3.
           05  WS-SUM-BASE               PIC S9(13)V99 COMP-3.
       01  WS-SQL-CODE                   PIC S9(9) COMP.
       01  WS-SHOW-CODE                  PIC -(8)9.
           EXEC SQL INCLUDE SQLCA END-EXEC.
           EXEC SQL INCLUDE BKDACCT END-EXEC.

       PROCEDURE DIVISION.
       RECONCILE SECTION.
       RECONCILE-START.
           ACCEPT WS-TODAY FROM DATE.
           MOVE ZERO TO WS-SUM-MASTER WS-SUM-BASE.
           OPEN INPUT ACCT-FILE OUTPUT DIFF-FILE.
           PERFORM READ-MASTER.
           PERFORM ONE-ACCOUNT UNTIL WS-ACCT-END = 'Y'.
           EXEC SQL
             SELECT SUM(BALANCE) INTO :WS-SUM-BASE FROM BK_ACCOUNT
           END-EXEC.
           IF WS-SUM-BASE NOT = WS-SUM-MASTER
               MOVE SPACES TO WS-DIFF-LINE
               MOVE WS-SUM-MASTER TO WD-MASTER
               MOVE WS-SUM-BASE TO WD-BASE
               MOVE 'SUMS DIFFER' TO WD-TEXT
               WRITE DF-LINE FROM WS-DIFF-LINE
           END-IF.
           CLOSE ACCT-FILE DIFF-FILE.
           STOP RUN.

       READ-MASTER.
           READ ACCT-FILE
               AT END MOVE 'Y' TO WS-ACCT-END
           END-READ.

       ONE-ACCOUNT.
           ADD RC-BALANCE TO WS-SUM-MASTER.
           MOVE RC-ACCT-NO TO HV-ACCOUNT-NO.
           EXEC SQL
             SELECT BALANCE, LAST_MOVED
               INTO :WS-DB-BALANCE,
                    :WS-DB-MOVED INDICATOR :WS-MOVED-NULL
               FROM BK_ACCOUNT
              WHERE ACCOUNT_NO = :HV-ACCOUNT-NO
           END-EXEC.
           EVALUATE SQLCODE
               WHEN ZERO
                   PERFORM COMPARE-ROW
               WHEN 100
                   PERFORM INSERT-ROW
               WHEN OTHER
                   PERFORM SQL-TROUBLE
           END-EVALUATE.
           PERFORM READ-MASTER.

       COMPARE-ROW.
           IF WS-DB-BALANCE NOT = RC-BALANCE
                   OR (WS-MOVED-NULL NOT < ZERO
                       AND WS-DB-MOVED NOT = RC-LAST-DATE)
               MOVE RC-ACCT-NO TO WD-ACCOUNT-NUMBER
               MOVE RC-BALANCE TO WD-MASTER
               MOVE WS-DB-BALANCE TO WD-BASE
               MOVE 'ROW CORRECTED' TO WD-TEXT
               WRITE DF-LINE FROM WS-DIFF-LINE
               MOVE RC-BALANCE TO HV-BALANCE
               MOVE RC-LAST-DATE TO HV-LAST-MOVED
               EXEC SQL
                 UPDATE BK_ACCOUNT
                    SET BALANCE = :HV-BALANCE,
                        LAST_MOVED = :HV-LAST-MOVED
                  WHERE ACCOUNT_NO = :HV-ACCOUNT-NO
               END-EXEC
           END-IF.

       INSERT-ROW.
           MOVE RC-OWNER TO HV-OWNER-NO.
           MOVE RC-BALANCE TO HV-BALANCE.
           MOVE RC-LAST-DATE TO HV-LAST-MOVED.
           EXEC SQL
             INSERT INTO BK_ACCOUNT
                 (ACCOUNT_NO, OWNER_NO, BALANCE, LAST_MOVED, REMARK)
               VALUES (:HV-ACCOUNT-NO, :HV-OWNER-NO, :HV-BALANCE,
                       :HV-LAST-MOVED, NULL)
           END-EXEC.
           MOVE RC-ACCT-NO TO WD-ACCOUNT-NUMBER.
           MOVE 'ROW WAS MISSING' TO WD-TEXT.
           WRITE DF-LINE FROM WS-DIFF-LINE.

       SQL-TROUBLE.
           MOVE SQLCODE TO WS-SQL-CODE.
           MOVE WS-SQL-CODE TO WS-SHOW-CODE.
           DISPLAY 'BKB080 SQL ' WS-SHOW-CODE ' AT ' RC-ACCT-NO.
           MOVE 'Y' TO WS-ACCT-END.
