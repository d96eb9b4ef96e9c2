       IDENTIFICATION DIVISION.
       PROGRAM-ID. BKB070.
       AUTHOR. ACCOUNTS SECTION, DATA CENTRE.
       DATE-WRITTEN. SEPTEMBER 1993.
      *****************************************************************
      *  ACCOUNTS WITHOUT A MOVEMENT SINCE A DATE, FROM THE DATA BASE.
      *  WRITES THE LIST OF DORMANT ACCOUNTS THAT BKB060 PRINTS AND
      *  MARKS THE ROWS.
      *
      *  93/09  FIRST VERSION
      *  98/05  LIMIT DATE BUILT WITH THE WINDOW
      *****************************************************************
       ENVIRONMENT DIVISION.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT DORMANT-LIST ASSIGN TO DORMANT
               ORGANIZATION IS RELATIVE
               ACCESS MODE IS SEQUENTIAL.
       DATA DIVISION.
       FILE SECTION.
       FD  DORMANT-LIST.
       01  DR-RECORD.
           05  DR-ACC-NUM                PIC X(8).
           05  DR-OWNER-NUM              PIC 9(7).
           05  DR-SINCE-DATE             PIC 9(6).

       WORKING-STORAGE SECTION.
           EXEC SQL INCLUDE SQLCA END-EXEC.
           EXEC SQL INCLUDE BKDACCT END-EXEC.
       01  WS-LIMIT-DATE                 PIC X(6).
       01  WS-LIMIT-PARTS REDEFINES WS-LIMIT-DATE.
           05  WS-LIMIT-YY               PIC 99.
           05  WS-LIMIT-MM               PIC 99.
           05  WS-LIMIT-DD               PIC 99.
       01  WS-REMARK-IND                 PIC S9(4) COMP.
       01  WS-COUNTERS.
           05  WS-FETCHED                PIC S9(7) COMP-3 VALUE ZERO.
           05  WS-ROWS-MARKED            PIC S9(9) COMP   VALUE ZERO.
       01  WS-END                        PIC X VALUE 'N'.
           88  NO-MORE-ROWS              VALUE 'Y'.
       01  WS-SQL-TEXT                   PIC -(9)9.

           EXEC SQL DECLARE QUIET CURSOR FOR
             SELECT ACCOUNT_NO, OWNER_NO, BALANCE, LAST_MOVED, REMARK
               FROM BK_ACCOUNT
              WHERE LAST_MOVED < :WS-LIMIT-DATE
                AND BALANCE > 0
              ORDER BY ACCOUNT_NO
           END-EXEC.

       PROCEDURE DIVISION.
       MAIN-LINE.
           PERFORM LIMIT-DATE.
           EXEC SQL OPEN QUIET END-EXEC.
           PERFORM CHECK-SQL.
           OPEN OUTPUT DORMANT-LIST.
           PERFORM FETCH-ROW.
           PERFORM UNTIL NO-MORE-ROWS
               PERFORM WRITE-DORMANT
               PERFORM MARK-ROW
               PERFORM FETCH-ROW
           END-PERFORM.
           EXEC SQL CLOSE QUIET END-EXEC.
           CLOSE DORMANT-LIST.
           EXEC SQL
             SELECT COUNT(*) INTO :WS-ROWS-MARKED
               FROM BK_ACCOUNT
              WHERE REMARK = 'DORMANT'
           END-EXEC.
           PERFORM CHECK-SQL.
           EXEC SQL COMMIT END-EXEC.
           DISPLAY 'BKB070 ' WS-FETCHED ' DORMANT, IN ALL '
               WS-ROWS-MARKED.
           STOP RUN.

      *    TEN YEARS AGO; BEFORE 2010 THIS GAVE THE NINETIES
       LIMIT-DATE.
           ACCEPT WS-LIMIT-DATE FROM DATE.
           IF WS-LIMIT-YY < 10
               ADD 90 TO WS-LIMIT-YY
           ELSE
               SUBTRACT 10 FROM WS-LIMIT-YY
           END-IF.

       FETCH-ROW.
           EXEC SQL
             FETCH QUIET
              INTO :HV-ACCOUNT-NO, :HV-OWNER-NO, :HV-BALANCE,
                   :HV-LAST-MOVED, :HV-REMARK:WS-REMARK-IND
           END-EXEC.
           IF SQLCODE = 100
               SET NO-MORE-ROWS TO TRUE
           ELSE
               PERFORM CHECK-SQL
               ADD 1 TO WS-FETCHED
           END-IF.

       WRITE-DORMANT.
           MOVE HV-ACCOUNT-NO TO DR-ACC-NUM.
           MOVE HV-OWNER-NO TO DR-OWNER-NUM.
           MOVE HV-LAST-MOVED TO DR-SINCE-DATE.
           WRITE DR-RECORD.

       MARK-ROW.
           IF WS-REMARK-IND < ZERO
               MOVE 7 TO HV-REMARK-LEN
               MOVE 'DORMANT' TO HV-REMARK-TEXT
               EXEC SQL
                 UPDATE BK_ACCOUNT
                    SET REMARK = :HV-REMARK
                  WHERE ACCOUNT_NO = :DCL-BK-ACCOUNT.HV-ACCOUNT-NO
               END-EXEC
               PERFORM CHECK-SQL
           END-IF.

       CHECK-SQL.
           IF SQLCODE < ZERO
               MOVE SQLCODE TO WS-SQL-TEXT
               DISPLAY 'BKB070 SQL ' WS-SQL-TEXT ' ' SQLERRMC
               EXEC SQL ROLLBACK END-EXEC
               MOVE 16 TO RETURN-CODE
               STOP RUN
           END-IF.
