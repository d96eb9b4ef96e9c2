       IDENTIFICATION DIVISION.
       PROGRAM-ID. BKS110.
       AUTHOR. ACCOUNTS SECTION, DATA CENTRE.
       DATE-WRITTEN. JUNE 1986.
      *****************************************************************
      *  POSTING RULE: WHAT ONE MOVEMENT DOES TO A BALANCE.
      *  CALLED BY BKB020 FOR EVERY MOVEMENT; CALLS BKS120 TO FIND
      *  HOW LATE A MOVEMENT IS ENTERED.
      *
      *  86/06  FIRST VERSION
      *  93/01  FEE FOR LATE ENTRIES
      *  97/10  NO CHANGE FOR THE CENTURY: BKS120 DOES THE WINDOW
      *****************************************************************
       ENVIRONMENT DIVISION.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  WS-TODAY                      PIC 9(6).
       01  WS-LATE-DAYS                  PIC S9(5) COMP-3.
       01  WS-METHOD                     PIC X VALUE 'T'.
       01  WS-VALUE-TEXT                 PIC X(6).
       01  WS-VALUE-FULL                 PIC 9(8).
       01  WS-TODAY-FULL                 PIC 9(8).
       01  WS-FEES.
           05  WS-LATE-FEE               PIC S9(3)V99 COMP-3
                                         VALUE 1.50.
           05  WS-OVER-FEE               PIC S9(3)V99 COMP-3
                                         VALUE 7.50.
       01  WS-ROOM                       PIC S9(9)V99 COMP-3.
       01  WS-SIGNED-AMOUNT              PIC S9(9)V99 COMP-3.
       01  WS-STATISTICS.
           05  WS-ACCEPT-COUNT           PIC S9(8) COMP VALUE ZERO.
           05  WS-REFUSE-COUNT           PIC S9(8) COMP VALUE ZERO.
           05  WS-LAST-REFUSED           PIC 9(8)  VALUE ZERO.

       01  WS-LATE-TABLE.
           05  WS-LATE-WEEK              PIC S9(7) COMP-3
                                         OCCURS 5 TIMES VALUE ZERO.
       77  WS-WEEK                       PIC S9(4) COMP.

       LINKAGE SECTION.
       COPY BKCPOST REPLACING ==:TAG:== BY ==LP==.

       PROCEDURE DIVISION USING LP-POSTING.
       APPLY-RULE.
           ACCEPT WS-TODAY FROM DATE.
           MOVE ZERO TO LP-FEE.
           PERFORM SIGN-THE-AMOUNT.
           PERFORM LATE-ENTRY.
           ADD LP-OLD-BALANCE WS-SIGNED-AMOUNT GIVING LP-NEW-BALANCE.
           SUBTRACT LP-FEE FROM LP-NEW-BALANCE.
           ADD LP-NEW-BALANCE LP-LIMIT GIVING WS-ROOM.
           IF WS-ROOM < ZERO AND WS-SIGNED-AMOUNT < ZERO
               SET LP-REFUSED TO TRUE
               MOVE LP-OLD-BALANCE TO LP-NEW-BALANCE
               SUBTRACT WS-OVER-FEE FROM LP-NEW-BALANCE
               MOVE WS-OVER-FEE TO LP-FEE
               ADD 1 TO WS-REFUSE-COUNT
               MOVE LP-ACCOUNT TO WS-LAST-REFUSED
           ELSE
               SET LP-ACCEPTED TO TRUE
               ADD 1 TO WS-ACCEPT-COUNT
           END-IF.
           GOBACK.

       SIGN-THE-AMOUNT.
           EVALUATE LP-KIND
               WHEN 'DP'
               WHEN 'IN'
                   MOVE LP-AMOUNT TO WS-SIGNED-AMOUNT
               WHEN 'WD'
               WHEN 'CH'
               WHEN 'TF'
                   COMPUTE WS-SIGNED-AMOUNT = ZERO - LP-AMOUNT
               WHEN OTHER
                   MOVE ZERO TO WS-SIGNED-AMOUNT
           END-EVALUATE.

      *    A MOVEMENT ENTERED MORE THAN FIVE DAYS LATE COSTS A FEE
       LATE-ENTRY.
           MOVE LP-VALUE-DATE TO WS-VALUE-TEXT.
           CALL 'BKS121' USING WS-VALUE-TEXT WS-VALUE-FULL.
           CALL 'BKS121' USING WS-TODAY WS-TODAY-FULL.
           IF WS-VALUE-FULL = ZERO OR > WS-TODAY-FULL
               DISPLAY 'BKS110 VALUE DATE ' LP-VALUE-DATE
                   ' ON ACCOUNT ' LP-ACCOUNT
               MOVE WS-TODAY TO LP-VALUE-DATE
           END-IF.
           CALL 'BKS120' USING BY CONTENT LP-VALUE-DATE WS-TODAY
                               BY REFERENCE WS-METHOD WS-LATE-DAYS.
           IF WS-LATE-DAYS > 5
               ADD WS-LATE-FEE TO LP-FEE
               PERFORM COUNT-LATE
           END-IF.

      *    HOW LATE THE BRANCHES ARE, IN WEEKS; FIVE IS FIVE AND MORE
       COUNT-LATE.
           DIVIDE WS-LATE-DAYS BY 7 GIVING WS-WEEK.
           IF WS-WEEK < 1
               MOVE 1 TO WS-WEEK
           END-IF.
           IF WS-WEEK > 5
               MOVE 5 TO WS-WEEK
           END-IF.
           ADD 1 TO WS-LATE-WEEK(WS-WEEK).
