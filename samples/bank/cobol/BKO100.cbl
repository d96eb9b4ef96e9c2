       IDENTIFICATION DIVISION.
       PROGRAM-ID. BKO100.
       AUTHOR. ONLINE SECTION, DATA CENTRE.
       DATE-WRITTEN. MAY 1990.
      *****************************************************************
      *  ONLINE: MENU.  ENTER STARTS THE INQUIRY, PF5 THE AMENDMENT.
      *
      *  90/05  FIRST VERSION
      *  98/11  THE NUMBER IS CHECKED BEFORE ANY FILE IS READ
      *****************************************************************
       ENVIRONMENT DIVISION.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       COPY BKCMAP1.
       COPY DFHAID.
       COPY BKCCHECK.
       01  WS-COMM.
           COPY BKCCOMM REPLACING ==:P:== BY ==WS==.
       01  WS-COMM-LENGTH                PIC S9(4) COMP VALUE 90.
       01  WS-RESPONSE                   PIC S9(8) COMP.
       01  WS-CLOCK                      PIC S9(15) COMP-3.
       01  WS-FAREWELL                   PIC X(30)
                                         VALUE 'END OF BANKING SESSION'.

       LINKAGE SECTION.
       01  DFHCOMMAREA.
           COPY BKCCOMM REPLACING ==:P:== BY ==CA==.

       PROCEDURE DIVISION.
       MENU-MAIN.
           IF EIBCALEN = ZERO
               PERFORM FIRST-SCREEN
           ELSE
               MOVE DFHCOMMAREA TO WS-COMM
               EVALUATE EIBAID
                   WHEN DFHPF3
                   WHEN DFHCLEAR
                       PERFORM LEAVE-SESSION
                   WHEN DFHENTER
                       MOVE 'I' TO WS-FUNCTION
                       PERFORM TAKE-NUMBER
                   WHEN DFHPF5
                       MOVE 'A' TO WS-FUNCTION
                       PERFORM TAKE-NUMBER
                   WHEN OTHER
                       MOVE 'KEY NOT USED' TO MSGO
                       PERFORM SEND-SCREEN
               END-EVALUATE
           END-IF.
           EXEC CICS RETURN
               TRANSID('BK01')
               COMMAREA(WS-COMM)
               LENGTH(WS-COMM-LENGTH)
           END-EXEC.

       FIRST-SCREEN.
           MOVE LOW-VALUES TO BKMAP1O.
           INITIALIZE WS-COMM.
           EXEC CICS ASKTIME ABSTIME(WS-CLOCK) END-EXEC.
           EXEC CICS FORMATTIME
               ABSTIME(WS-CLOCK)
               YYMMDD(WS-TODAY)
           END-EXEC.
           MOVE 'ENTER AN ACCOUNT NUMBER' TO MSGO.
           EXEC CICS SEND MAP('BKMAP1')
               FROM(BKMAP1O)
               ERASE
           END-EXEC.

       TAKE-NUMBER.
           EXEC CICS RECEIVE MAP('BKMAP1')
               INTO(BKMAP1I)
               RESP(WS-RESPONSE)
           END-EXEC.
           IF WS-RESPONSE NOT = DFHRESP(NORMAL) OR ACCNOL = ZERO
               MOVE 'ENTER AN ACCOUNT NUMBER' TO MSGO
               PERFORM SEND-SCREEN
           ELSE
               MOVE ACCNOI TO CK-ACCT
               CALL 'BKS100' USING CK-PARAMETERS
               IF CK-GOOD
                   PERFORM HAND-OVER
               ELSE
                   MOVE 'NO SUCH ACCOUNT' TO MSGO
                   PERFORM SEND-SCREEN
               END-IF
           END-IF.

       HAND-OVER.
           MOVE CK-ACCT TO WS-ACC-KEY.
           MOVE ZERO TO WS-RETURN.
           IF WS-INQUIRE
               EXEC CICS XCTL PROGRAM('BKO110')
                   COMMAREA(WS-COMM)
                   LENGTH(WS-COMM-LENGTH)
               END-EXEC
           ELSE
               EXEC CICS XCTL PROGRAM('BKO120')
                   COMMAREA(WS-COMM)
                   LENGTH(WS-COMM-LENGTH)
               END-EXEC
           END-IF.

       SEND-SCREEN.
           EXEC CICS SEND MAP('BKMAP1')
               FROM(BKMAP1O)
               DATAONLY
           END-EXEC.

       LEAVE-SESSION.
           EXEC CICS SEND TEXT
               FROM(WS-FAREWELL)
               LENGTH(LENGTH OF WS-FAREWELL)
               ERASE
           END-EXEC.
           EXEC CICS RETURN END-EXEC.
