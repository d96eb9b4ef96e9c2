       IDENTIFICATION DIVISION.
       PROGRAM-ID. BKB060.
       AUTHOR. CUSTOMER SECTION, DATA CENTRE.
       DATE-WRITTEN. OCTOBER 1988.
      *****************************************************************
      *  YEARLY EXTRACT FOR THE MAILING HOUSE: EVERY ACTIVE CUSTOMER
      *  WITH HIS FIRST ACCOUNT, AND THE LIST OF DORMANT ACCOUNTS.
      *
      *  88/10  FIRST VERSION
      *  93/12  DORMANT ACCOUNTS FROM BKB070'S LIST
      *  00/02  AGE COUNTED WITH THE WINDOW, NOT BY SUBTRACTING YEARS
      *****************************************************************
       ENVIRONMENT DIVISION.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT CUSTOMERS ASSIGN TO CUSTMST
               ORGANIZATION IS INDEXED
               ACCESS MODE IS DYNAMIC
               RECORD KEY IS CU-CUST-NO
               FILE STATUS IS WS-STATUS.
           SELECT MAIL-FILE ASSIGN TO MAILOUT.
           SELECT DORMANT-FILE ASSIGN TO DORMANT
               ORGANIZATION IS RELATIVE
               ACCESS MODE IS SEQUENTIAL
               RELATIVE KEY IS WS-REL-KEY.
       DATA DIVISION.
       FILE SECTION.
       FD  CUSTOMERS.
       COPY BKCCUST REPLACING ==:TAG:== BY ==CU==.
       FD  MAIL-FILE
           RECORD IS VARYING IN SIZE FROM 60 TO 200 CHARACTERS
           DEPENDING ON WS-MAIL-LEN.
       01  ML-RECORD.
           05  ML-FIXED.
               10  ML-CUST-NO            PIC 9(7).
               10  ML-ACCT               PIC 9(8).
               10  ML-GROUP              PIC X.
               10  ML-NAME.
                   15  TITLE-TEXT        PIC X(4).
                   15  FORENAMES         PIC X(25).
                   15  SURNAME           PIC X(15).
           05  ML-TEXT                   PIC X(140).
       FD  DORMANT-FILE.
       01  DO-RECORD.
           05  DO-ACCOUNT                PIC X(8).
           05  DO-BRANCH-SERIAL REDEFINES DO-ACCOUNT.
               10  DO-BRANCH             PIC X(2).
               10  DO-SERIAL             PIC X(6).
           05  DO-OWNER                  PIC 9(7).
           05  DO-SINCE                  PIC 9(6).
       66  DO-KEY RENAMES DO-ACCOUNT THRU DO-OWNER.

       WORKING-STORAGE SECTION.
       77  WS-STATUS                     PIC XX.
       77  WS-REL-KEY                    PIC 9(6).
       77  WS-MAIL-LEN                   PIC 9(3) COMP.
       77  WS-POINTER                    PIC S9(4) COMP.
       77  WS-LINE-NO                    PIC S9(4) COMP.
       77  WS-AGE                        PIC S9(3).
       01  WS-SWITCH                     PIC X VALUE '0'.
           88  CUSTOMERS-DONE            VALUE '1'.
           88  DORMANT-DONE              VALUE '2'.
       01  WS-PERSON.
           05  TITLE-TEXT                PIC X(4).
           05  SURNAME                   PIC X(25).
           05  FORENAMES                 PIC X(25).
       01  WS-TODAY-YEAR                 PIC 9(4).
       01  WS-DORMANT-KEY.
           05  WS-DORMANT-ACCT           PIC 9(8).
           05  WS-DORMANT-OWNER          PIC 9(7).
       01  WS-LAST-KEY                   PIC X(15).
       01  WS-COUNTS.
           05  WS-WRITTEN                PIC S9(7) COMP-3 VALUE ZERO.
           05  WS-LISTED                 PIC S9(7) COMP-3 VALUE ZERO.
       COPY BKCDATE.

       PROCEDURE DIVISION.
       MAIN-LINE.
           ACCEPT DW-SHORT-DATE FROM DATE.
           PERFORM WINDOW-SHORT-DATE.
           MOVE DW-YEAR TO WS-TODAY-YEAR.
           OPEN INPUT CUSTOMERS DORMANT-FILE OUTPUT MAIL-FILE.
           MOVE 1000000 TO CU-CUST-NO.
           START CUSTOMERS KEY IS NOT LESS THAN CU-CUST-NO
               INVALID KEY SET CUSTOMERS-DONE TO TRUE
           END-START.
           PERFORM UNTIL CUSTOMERS-DONE
               READ CUSTOMERS NEXT RECORD
                   AT END SET CUSTOMERS-DONE TO TRUE
                   NOT AT END PERFORM ONE-CUSTOMER
               END-READ
           END-PERFORM.
           PERFORM UNTIL DORMANT-DONE
               READ DORMANT-FILE
                   AT END SET DORMANT-DONE TO TRUE
                   NOT AT END PERFORM ONE-DORMANT
               END-READ
           END-PERFORM.
           CLOSE CUSTOMERS DORMANT-FILE MAIL-FILE.
           DISPLAY 'BKB060 ' WS-WRITTEN ' MAIL ' WS-LISTED ' DORMANT'.
           STOP RUN.

       ONE-CUSTOMER.
           IF CU-ACTIVE
               PERFORM FIND-AGE
               MOVE SPACES TO ML-RECORD
               MOVE CU-CUST-NO TO ML-CUST-NO
               MOVE CU-ACCT-ENTRY(1) TO ML-ACCT
               MOVE CU-TITLE TO TITLE-TEXT OF WS-PERSON
               MOVE CU-SURNAME TO SURNAME IN WS-PERSON
               MOVE CU-FORENAMES TO FORENAMES OF WS-PERSON
               MOVE CORRESPONDING WS-PERSON TO ML-NAME
               PERFORM AGE-GROUP
               PERFORM FILL-TEXT
               COMPUTE WS-MAIL-LEN = 60 + WS-POINTER - 1
               WRITE ML-RECORD
               ADD 1 TO WS-WRITTEN
           END-IF.

       FIND-AGE.
           MOVE CU-BIRTH-DATE TO DW-SHORT-DATE.
           PERFORM WINDOW-SHORT-DATE.
           IF DW-YEAR > WS-TODAY-YEAR
      *        NOBODY IS BORN TOMORROW: THE WINDOW WAS TOO YOUNG
               SUBTRACT 1 FROM DW-CENTURY
           END-IF.
           COMPUTE WS-AGE = WS-TODAY-YEAR - DW-YEAR.

       AGE-GROUP.
           EVALUATE WS-AGE
               WHEN 0 THRU 17
                   MOVE 'J' TO ML-GROUP
               WHEN 18 THRU 29
                   MOVE 'Y' TO ML-GROUP
               WHEN OTHER
                   MOVE 'S' TO ML-GROUP
           END-EVALUATE.

       FILL-TEXT.
           MOVE 1 TO WS-POINTER.
           PERFORM VARYING WS-LINE-NO FROM 1 BY 1 UNTIL WS-LINE-NO > 4
               IF CU-ADDR-LINE(WS-LINE-NO) NOT = SPACES
                   STRING CU-ADDR-LINE(WS-LINE-NO) DELIMITED BY '  '
                          '/' DELIMITED BY SIZE
                       INTO ML-TEXT
                       WITH POINTER WS-POINTER
                   END-STRING
               END-IF
           END-PERFORM.
           STRING CU-POSTCODE DELIMITED BY SPACE
               INTO ML-TEXT WITH POINTER WS-POINTER.

       ONE-DORMANT.
           IF DO-KEY NOT = WS-LAST-KEY
               MOVE DO-KEY TO WS-DORMANT-KEY WS-LAST-KEY
               DISPLAY 'BKB060 DORMANT ' WS-DORMANT-ACCT
                   ' OWNER ' WS-DORMANT-OWNER
                   ' SINCE ' DO-SINCE(1:2) '/' DO-SINCE(3:2)
               ADD 1 TO WS-LISTED
           END-IF.

       COPY BKCWINDW.
