       IDENTIFICATION DIVISION.
       PROGRAM-ID. BKO120.
       AUTHOR. ONLINE SECTION, DATA CENTRE.
       DATE-WRITTEN. AUGUST 1990.
      *****************************************************************
      *  ONLINE: AMENDMENT.  OPENS A DORMANT ACCOUNT AGAIN AND MAKES
      *  SURE THAT THE OWNER'S LIST OF ACCOUNTS HOLDS IT.
      *****************************************************************
       ENVIRONMENT DIVISION.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       COPY BKCMAP1.
       COPY BKCCUST REPLACING ==:TAG:== BY ==WC==.
       01  WS-KEYS.
           05  WS-ACCOUNT-KEY            PIC 9(8).
           05  WS-OWNER-KEY              PIC 9(7).
       01  WS-RESP                       PIC S9(8) COMP.
       01  WS-SLOT                       PIC S9(4) COMP.
       01  WS-FREE-SLOT                  PIC S9(4) COMP.
       01  WS-FOUND                      PIC X.
           88  NUMBER-LISTED             VALUE 'Y'.
       01  WS-JOURNAL.
           05  WJ-TRANSACTION            PIC X(4).
           05  WJ-TERMINAL               PIC X(4).
           05  WJ-DATE                   PIC 9(6).
           05  WJ-ACC-NO                 PIC X(8).
           05  WJ-OLD-STATE              PIC X.
           05  WJ-NEW-STATE              PIC X.

       LINKAGE SECTION.
       01  DFHCOMMAREA.
           COPY BKCCOMM REPLACING ==:P:== BY ==CA==.
       COPY BKCACCT REPLACING ==:TAG:== BY ==LA==.

       PROCEDURE DIVISION.
       AMEND-MAIN.
           MOVE CA-ACC-KEY TO WS-ACCOUNT-KEY WJ-ACC-NO.
           EXEC CICS READ FILE('ACCTMST') UPDATE
               SET(ADDRESS OF LA-ACCOUNT-REC)
               RIDFLD(WS-ACCOUNT-KEY)
               RESP(WS-RESP)
           END-EXEC.
           IF WS-RESP NOT = DFHRESP(NORMAL)
               MOVE 'NO SUCH ACCOUNT' TO MSGO
               MOVE 13 TO CA-RETURN
           ELSE
               PERFORM OPEN-AGAIN
               PERFORM LIST-NUMBER
               PERFORM WRITE-JOURNAL
               MOVE 'ACCOUNT AMENDED' TO MSGO
           END-IF.
           MOVE CA-ACC-KEY TO ACCNOO.
           EXEC CICS SEND MAP('BKMAP1') FROM(BKMAP1O) END-EXEC.
           EXEC CICS RETURN TRANSID('BK01')
               COMMAREA(DFHCOMMAREA)
               LENGTH(EIBCALEN)
           END-EXEC.

       OPEN-AGAIN.
           MOVE LA-STATE TO WJ-OLD-STATE.
           IF LA-DORMANT
               SET LA-OPEN TO TRUE
               MOVE CA-TODAY TO LA-LAST-DATE
           END-IF.
           MOVE LA-STATE TO WJ-NEW-STATE.
           MOVE LA-OWNER TO WS-OWNER-KEY.
           EXEC CICS REWRITE FILE('ACCTMST')
               FROM(LA-ACCOUNT-REC)
               RESP(WS-RESP)
           END-EXEC.

       LIST-NUMBER.
           EXEC CICS READ FILE('CUSTMST') UPDATE
               INTO(WC-CUSTOMER-REC)
               RIDFLD(WS-OWNER-KEY)
               RESP(WS-RESP)
           END-EXEC.
           IF WS-RESP = DFHRESP(NORMAL)
               MOVE 'N' TO WS-FOUND
               MOVE ZERO TO WS-FREE-SLOT
               PERFORM VARYING WS-SLOT FROM 8 BY -1 UNTIL WS-SLOT < 1
                   IF WC-ACCT-ENTRY(WS-SLOT) = WS-ACCOUNT-KEY
                       SET NUMBER-LISTED TO TRUE
                   END-IF
                   IF WC-ACCT-ENTRY(WS-SLOT) = ZERO
                       MOVE WS-SLOT TO WS-FREE-SLOT
                   END-IF
               END-PERFORM
               IF NOT NUMBER-LISTED AND WS-FREE-SLOT > ZERO
                   MOVE WS-ACCOUNT-KEY TO WC-ACCT-ENTRY(WS-FREE-SLOT)
                   ADD 1 TO WC-ACCT-COUNT
                   EXEC CICS REWRITE FILE('CUSTMST')
                       FROM(WC-CUSTOMER-REC)
                   END-EXEC
               ELSE
                   EXEC CICS UNLOCK FILE('CUSTMST') END-EXEC
               END-IF
           END-IF.

       WRITE-JOURNAL.
           MOVE EIBTRNID TO WJ-TRANSACTION.
           MOVE EIBTRMID TO WJ-TERMINAL.
           MOVE CA-TODAY TO WJ-DATE.
           EXEC CICS WRITEQ TD QUEUE('BKJL')
               FROM(WS-JOURNAL)
               LENGTH(LENGTH OF WS-JOURNAL)
           END-EXEC.
