       IDENTIFICATION DIVISION.
       PROGRAM-ID. BKO150.
       AUTHOR. ONLINE SECTION, DATA CENTRE.
       DATE-WRITTEN. JUNE 1990.
      *****************************************************************
      *  ONLINE: WHAT IS AVAILABLE ON AN ACCOUNT.
      *  TAKES THE BALANCE OF THE COMMUNICATION AREA AND SUBTRACTS THE
      *  MOVEMENTS OF TODAY THAT ARE NOT POSTED YET.  THE MOVEMENTS
      *  LIE IN TRANNEW, KEYED BY ACCOUNT AND RUNNING NUMBER.
      *****************************************************************
       ENVIRONMENT DIVISION.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  WS-BROWSE-KEY.
           05  WS-BROWSE-ACCT            PIC X(8).
           05  WS-BROWSE-SEQ             PIC 9(6).
       01  WS-NEW-MOVEMENT.
           05  NM-KEY.
               10  NM-ACCT               PIC X(8).
               10  NM-SEQ                PIC 9(6).
           05  NM-CODE                   PIC X(2).
           05  NM-AMOUNT                 PIC S9(9)V99 COMP-3.
           05  NM-DATE                   PIC 9(6).
       01  WS-LEN                        PIC S9(4) COMP VALUE 28.
       01  WS-RESP                       PIC S9(8) COMP.
       01  WS-RESERVED                   PIC S9(9)V99 COMP-3.
       01  WS-TOO-OLD                    PIC S9(4) COMP VALUE ZERO.
       01  WS-QUEUE-NAME.
           05  FILLER                    PIC X(4) VALUE 'BKOV'.
           05  WS-QUEUE-TERM             PIC X(4).
       01  WS-QUEUE-ITEM                 PIC S9(4) COMP.
       01  WS-OVERDRAWN-LOG.
           05  OL-USER                   PIC X(8).
           05  OL-ACC-KEY                PIC X(8).
           05  OL-DATE                   PIC 9(6).
           05  OL-MISSING                PIC S9(9)V99 COMP-3.

       LINKAGE SECTION.
       01  DFHCOMMAREA.
           COPY BKCCOMM REPLACING ==:P:== BY ==LK==.

       PROCEDURE DIVISION.
       AVAILABLE-MAIN.
           MOVE ZERO TO WS-RESERVED.
           MOVE LK-ACC-KEY TO WS-BROWSE-ACCT.
           MOVE ZERO TO WS-BROWSE-SEQ.
           EXEC CICS STARTBR FILE('TRANNEW')
               RIDFLD(WS-BROWSE-KEY)
               GTEQ
               RESP(WS-RESP)
           END-EXEC.
           IF WS-RESP = DFHRESP(NORMAL)
               PERFORM NEXT-MOVEMENT
               PERFORM UNTIL WS-RESP NOT = DFHRESP(NORMAL)
                       OR NM-ACCT NOT = LK-ACC-KEY
                   PERFORM RESERVE-AMOUNT
                   PERFORM NEXT-MOVEMENT
               END-PERFORM
               EXEC CICS ENDBR FILE('TRANNEW') END-EXEC
           END-IF.
           SUBTRACT WS-RESERVED FROM LK-AVAILABLE.
           SET LK-OK TO TRUE.
           IF LK-AVAILABLE < ZERO
               PERFORM LOG-OVERDRAWN
           END-IF.
           IF WS-TOO-OLD > ZERO
               MOVE 20 TO LK-RETURN
               STRING 'OLD MOVEMENTS WAIT ON ' LK-ACC-KEY
                   DELIMITED BY SIZE INTO LK-MESSAGE
           END-IF.
           EXEC CICS RETURN END-EXEC.

       NEXT-MOVEMENT.
           EXEC CICS READNEXT FILE('TRANNEW')
               INTO(WS-NEW-MOVEMENT)
               LENGTH(WS-LEN)
               RIDFLD(WS-BROWSE-KEY)
               RESP(WS-RESP)
           END-EXEC.

      *    THE HELP DESK LOOKS AT THE QUEUE OF THE TERMINAL
       LOG-OVERDRAWN.
           EXEC CICS ASSIGN USERID(OL-USER) END-EXEC.
           MOVE LK-ACC-KEY TO OL-ACC-KEY.
           MOVE LK-TODAY TO OL-DATE.
           COMPUTE OL-MISSING = ZERO - LK-AVAILABLE.
           MOVE EIBTRMID TO WS-QUEUE-TERM.
           EXEC CICS WRITEQ TS QUEUE(WS-QUEUE-NAME)
               FROM(WS-OVERDRAWN-LOG)
               ITEM(WS-QUEUE-ITEM)
               RESP(WS-RESP)
           END-EXEC.

       RESERVE-AMOUNT.
           EVALUATE NM-CODE ALSO TRUE
               WHEN 'WD' ALSO NM-DATE = LK-TODAY
               WHEN 'CH' ALSO NM-DATE = LK-TODAY
               WHEN 'TF' ALSO NM-DATE = LK-TODAY
                   ADD NM-AMOUNT TO WS-RESERVED
               WHEN ANY ALSO NM-DATE < LK-TODAY
                   ADD 1 TO WS-TOO-OLD
           END-EVALUATE.
