       IDENTIFICATION DIVISION.
       PROGRAM-ID. BKS100.
       AUTHOR. ACCOUNTS SECTION, DATA CENTRE.
       DATE-WRITTEN. MARCH 1985.
      *****************************************************************
      *  CHECK OF AN ACCOUNT NUMBER.
      *  BRANCH (2), SERIAL (5), CHECK DIGIT (1).  THE CHECK DIGIT IS
      *  THE REMAINDER OF THE WEIGHTED SUM BY 11, TEN GIVING ZERO.
      *
      *  85/03  FIRST VERSION
      *  91/07  BRANCHES 60 TO 69 ADDED (TAKEN OVER FROM THE COOP)
      *  98/11  CALLED FROM THE ONLINE PROGRAMS AS WELL
      *****************************************************************
       ENVIRONMENT DIVISION.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  WS-WEIGHTS-LIT                PIC X(7) VALUE '8765432'.
       01  WS-WEIGHTS REDEFINES WS-WEIGHTS-LIT.
           05  WS-WEIGHT                 PIC 9 OCCURS 7 TIMES.
       01  WS-ACC-KEY                    PIC X(8).
       01  WS-ACC-DIGITS REDEFINES WS-ACC-KEY.
           05  WS-ACC-DIGIT              PIC 9 OCCURS 8 TIMES.
       01  WS-ACC-NUMERIC REDEFINES WS-ACC-KEY.
           05  WS-ACC-BRANCH             PIC 99.
               88  WS-OLD-BRANCH         VALUES 10 THRU 29.
               88  WS-COOP-BRANCH        VALUES 60 THRU 69.
           05  WS-ACC-SERIAL             PIC 9(5).
           05  WS-ACC-CHECK              PIC 9.
       77  WS-SUM                        PIC S9(4) COMP VALUE ZERO.
       77  WS-QUOTIENT                   PIC S9(4) COMP VALUE ZERO.
       77  WS-REST                       PIC S9(4) COMP VALUE ZERO.
       77  WS-POS                        PIC S9(4) COMP VALUE ZERO.
       77  WS-CALLS                      PIC S9(8) COMP VALUE ZERO.
       01  WS-REASON-COUNTS.
           05  WS-REASON-COUNT           PIC S9(7) COMP-3
                                         OCCURS 3 TIMES VALUE ZERO.
       77  WS-LAST-GOOD                  PIC X(8)  VALUE SPACES.

       LINKAGE SECTION.
       COPY BKCCHECK.

       PROCEDURE DIVISION USING CK-PARAMETERS.
       MAIN-CHECK.
           ADD 1 TO WS-CALLS.
           MOVE ZERO TO CK-REASON.
      *    THE SAME NUMBER OFTEN COMES SEVERAL TIMES IN A ROW
           IF CK-ACCT = WS-LAST-GOOD
               GO TO LEAVE-CHECK
           END-IF.
           MOVE CK-ACCT TO WS-ACC-KEY.
           IF WS-ACC-KEY NOT NUMERIC
               SET CK-NOT-NUMERIC TO TRUE
               GO TO LEAVE-CHECK
           END-IF.
           PERFORM CHECK-BRANCH.
           IF NOT CK-GOOD
               GO TO LEAVE-CHECK
           END-IF.
           PERFORM CHECK-DIGIT.
           IF CK-GOOD
               MOVE CK-ACCT TO WS-LAST-GOOD
           END-IF.
       LEAVE-CHECK.
           IF NOT CK-GOOD
               PERFORM COUNT-REASON
           END-IF.
           GOBACK.

       COUNT-REASON.
           ADD 1 TO WS-REASON-COUNT(CK-REASON).
           IF WS-REASON-COUNT(CK-REASON) = 1000
               DISPLAY 'BKS100 1000 REFUSED, REASON ' CK-REASON
                   ' LAST ' CK-ACCT ' OF ' WS-CALLS
               MOVE ZERO TO WS-REASON-COUNT(CK-REASON)
           END-IF.

       CHECK-BRANCH.
           IF WS-OLD-BRANCH OR WS-COOP-BRANCH
               CONTINUE
           ELSE
               SET CK-WRONG-BRANCH TO TRUE
           END-IF.
      *    A SERIAL OF ZERO IS THE BRANCH'S OWN CASH ACCOUNT, NEVER
      *    POSTED BY HAND
           IF CK-ACCT(3:5) = '00000'
               SET CK-WRONG-BRANCH TO TRUE
           END-IF.

       CHECK-DIGIT.
           MOVE ZERO TO WS-SUM.
           PERFORM VARYING WS-POS FROM 1 BY 1 UNTIL WS-POS > 7
               COMPUTE WS-SUM = WS-SUM
                   + WS-ACC-DIGIT(WS-POS) * WS-WEIGHT(WS-POS)
           END-PERFORM.
           DIVIDE WS-SUM BY 11 GIVING WS-QUOTIENT
               REMAINDER WS-REST.
           IF WS-REST = 10
               MOVE ZERO TO WS-REST
           END-IF.
           IF WS-REST NOT = WS-ACC-CHECK
               SET CK-WRONG-DIGIT TO TRUE
           END-IF.
