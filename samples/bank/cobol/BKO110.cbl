       IDENTIFICATION DIVISION.
       PROGRAM-ID. BKO110.
       AUTHOR. ONLINE SECTION, DATA CENTRE.
       DATE-WRITTEN. MAY 1990.
      *****************************************************************
      *  ONLINE: INQUIRY ON ONE ACCOUNT.
      *  READS ACCOUNT AND CUSTOMER, ASKS BKO150 WHAT IS AVAILABLE.
      *****************************************************************
       ENVIRONMENT DIVISION.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       COPY BKCMAP1.
       COPY BKCACCT REPLACING ==:TAG:== BY ==WA==.
       COPY BKCCUST REPLACING ==:TAG:== BY ==WC==.
       COPY BKCDATE.
       01  WS-ACC-KEY                    PIC X(8).
       01  WS-CUSTOMER-KEY               PIC 9(7).
       01  WS-LENGTHS.
           05  WS-ACCT-LEN               PIC S9(4) COMP.
           05  WS-CUST-LEN               PIC S9(4) COMP.
       01  WS-RESP                       PIC S9(8) COMP.
       01  WS-RESP2                      PIC S9(8) COMP.
       01  WS-TASK-CODE                  PIC X(4).

       LINKAGE SECTION.
       01  DFHCOMMAREA.
           COPY BKCCOMM REPLACING ==:P:== BY ==CA==.

       PROCEDURE DIVISION.
       INQUIRY-MAIN.
           MOVE EIBTRNID TO WS-TASK-CODE.
           MOVE LOW-VALUES TO BKMAP1O.
           MOVE CA-ACC-KEY TO WS-ACC-KEY ACCNOO.
           MOVE LENGTH OF WA-ACCOUNT-REC TO WS-ACCT-LEN.
           EXEC CICS READ FILE('ACCTMST')
               INTO(WA-ACCOUNT-REC)
               LENGTH(WS-ACCT-LEN)
               RIDFLD(WS-ACC-KEY)
               RESP(WS-RESP)
               RESP2(WS-RESP2)
           END-EXEC.
           EVALUATE WS-RESP
               WHEN DFHRESP(NORMAL)
                   PERFORM READ-OWNER
                   PERFORM ASK-AVAILABLE
                   PERFORM FILL-SCREEN
               WHEN DFHRESP(NOTFND)
                   MOVE 13 TO CA-RETURN
                   MOVE 'NO SUCH ACCOUNT' TO MSGO
               WHEN OTHER
                   MOVE 99 TO CA-RETURN
                   MOVE 'FILE NOT AVAILABLE' TO MSGO
           END-EVALUATE.
           EXEC CICS SEND MAP('BKMAP1') FROM(BKMAP1O) ERASE END-EXEC.
           EXEC CICS RETURN TRANSID(WS-TASK-CODE)
               COMMAREA(DFHCOMMAREA)
           END-EXEC.

       READ-OWNER.
           MOVE WA-OWNER TO WS-CUSTOMER-KEY CA-CUST-KEY.
           MOVE LENGTH OF WC-CUSTOMER-REC TO WS-CUST-LEN.
           EXEC CICS READ FILE('CUSTMST')
               INTO(WC-CUSTOMER-REC)
               LENGTH(WS-CUST-LEN)
               RIDFLD(WS-CUSTOMER-KEY)
               RESP(WS-RESP)
           END-EXEC.
           IF WS-RESP = DFHRESP(NORMAL)
               STRING WC-FORENAMES DELIMITED BY '  '
                      ' ' DELIMITED BY SIZE
                      WC-SURNAME DELIMITED BY '  '
                   INTO NAMEO
           ELSE
               MOVE ALL '?' TO NAMEO
           END-IF.

       ASK-AVAILABLE.
           MOVE WA-BALANCE TO CA-AVAILABLE.
           EXEC CICS LINK PROGRAM('BKO150')
               COMMAREA(DFHCOMMAREA)
               LENGTH(90)
           END-EXEC.
      *    ONLY A CURRENT ACCOUNT MAY BE OVERDRAWN
           IF WA-CURRENT
               ADD WA-LIMIT TO CA-AVAILABLE
           END-IF.
           IF NOT CA-OK
               MOVE CA-MESSAGE TO MSGO
           END-IF.

       FILL-SCREEN.
           MOVE CA-AVAILABLE TO BALO.
           MOVE WA-LAST-DATE TO DW-SHORT-DATE.
           MOVE DW-DD TO DW-ED-DD.
           MOVE DW-MM TO DW-ED-MM.
           MOVE DW-YY TO DW-ED-YY.
           MOVE DW-EDITED TO LASTO.
           IF WA-DORMANT
               MOVE 'ACCOUNT IS DORMANT' TO MSGO
           END-IF.
