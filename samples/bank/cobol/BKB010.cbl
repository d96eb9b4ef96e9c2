       IDENTIFICATION DIVISION.
       PROGRAM-ID. BKB010.
       AUTHOR. ACCOUNTS SECTION, DATA CENTRE.
       DATE-WRITTEN. APRIL 1985.
      *****************************************************************
      *  EDIT OF THE BRANCHES' DAILY MOVEMENTS.
      *  THE BRANCHES SEND ONE LINE PER MOVEMENT, FIELDS SET APART BY
      *  SEMICOLONS:  BRANCH;SEQ;ACCOUNT;CODE;AMOUNT;DATE;CONTRA;TEXT
      *  GOOD LINES BECOME TRANSACTION RECORDS (BKCTRAN), BAD ONES GO
      *  BACK TO THE BRANCH WITH A REASON.
      *
      *  85/04  FIRST VERSION, PUNCHED CARDS
      *  92/03  LINES FROM THE BRANCH COMPUTERS INSTEAD OF CARDS
      *  99/01  DATES AFTER TODAY ARE REFUSED
      *****************************************************************
       ENVIRONMENT DIVISION.
       CONFIGURATION SECTION.
       SOURCE-COMPUTER. MAINFRAME WITH DEBUGGING MODE.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT BRANCH-FILE ASSIGN TO BRANCHIN
               ORGANIZATION IS LINE SEQUENTIAL
               FILE STATUS IS WS-BRANCH-STATUS.
           SELECT TRAN-FILE ASSIGN TO TRANDAY
               FILE STATUS IS WS-TRAN-STATUS.
           SELECT REJECT-FILE ASSIGN TO REJECTS
               ORGANIZATION IS LINE SEQUENTIAL.
       DATA DIVISION.
       FILE SECTION.
       FD  BRANCH-FILE.
       01  BR-LINE                       PIC X(120).
       FD  TRAN-FILE.
       COPY BKCTRAN REPLACING ==:TAG:== BY ==TR==.
       FD  REJECT-FILE.
       01  RJ-LINE.
           05  RJ-TEXT                   PIC X(120).
           05  RJ-REASON                 PIC X(30).

       WORKING-STORAGE SECTION.
       01  WS-STATUS-AREA.
           05  WS-BRANCH-STATUS          PIC XX.
           05  WS-TRAN-STATUS            PIC XX.
       01  WS-SWITCHES.
           05  WS-END-SWITCH             PIC X VALUE 'N'.
               88  END-OF-BRANCHES       VALUE 'Y'.
           05  WS-BAD-SWITCH             PIC X.
               88  BAD-LINE              VALUE 'Y'.
               88  GOOD-LINE             VALUE 'N'.
       01  WS-FIELDS.
           05  WS-F-BRANCH               PIC X(2).
           05  WS-F-SEQ                  PIC X(6).
           05  WS-F-ACCT                 PIC X(8).
           05  WS-F-CODE                 PIC X(2).
           05  WS-F-AMOUNT               PIC X(12).
           05  WS-F-DATE                 PIC X(6).
           05  WS-F-CONTRA               PIC X(8).
           05  WS-F-TEXT                 PIC X(24).
       01  WS-AMOUNT-WORK.
           05  WS-WHOLE                  PIC X(9) JUSTIFIED RIGHT.
           05  WS-WHOLE-N REDEFINES WS-WHOLE
                                         PIC 9(9).
           05  WS-CENTS                  PIC 99.
       77  WS-FIELD-COUNT                PIC S9(4) COMP.
       77  WS-SEMICOLONS                 PIC S9(4) COMP.
       77  WS-NEXT                       PIC S9(4) COMP.
       77  WS-REASON                     PIC X(30).
       01  WS-COUNTERS.
           05  WS-LINES-READ             PIC S9(7) COMP-3 VALUE ZERO.
           05  WS-LINES-GOOD             PIC S9(7) COMP-3 VALUE ZERO.
           05  WS-LINES-BAD              PIC S9(7) COMP-3 VALUE ZERO.
       01  WS-HEADING                    PIC X(90)  VALUE 'DAILY MOVEMEN
      -    'TS REFUSED BY THE EDIT, PLEASE ENTER AGAIN'.
       01  WS-TODAY                      PIC 9(6).
       COPY BKCCHECK.
       COPY BKCDATE.
       01  WS-TODAY-LONG                 PIC 9(8).

       PROCEDURE DIVISION.
       MAIN-LINE.
           PERFORM OPEN-FILES.
           PERFORM EDIT-ONE-LINE UNTIL END-OF-BRANCHES.
           PERFORM CLOSE-FILES.
           STOP RUN.

       OPEN-FILES.
           OPEN INPUT BRANCH-FILE OUTPUT TRAN-FILE REJECT-FILE.
           IF WS-BRANCH-STATUS NOT = '00'
               DISPLAY 'BKB010 NO BRANCH LINES ' WS-BRANCH-STATUS
               MOVE 16 TO RETURN-CODE
               STOP RUN
           END-IF.
           ACCEPT WS-TODAY FROM DATE.
           MOVE WS-TODAY TO DW-SHORT-DATE.
           PERFORM WINDOW-SHORT-DATE.
           MOVE DW-LONG-DATE TO WS-TODAY-LONG.
           MOVE WS-HEADING TO RJ-LINE.
           WRITE RJ-LINE.
           PERFORM READ-LINE.

       READ-LINE.
           READ BRANCH-FILE
               AT END SET END-OF-BRANCHES TO TRUE
               NOT AT END ADD 1 TO WS-LINES-READ
           END-READ.

       EDIT-ONE-LINE.
           SET GOOD-LINE TO TRUE.
           MOVE SPACES TO WS-REASON WS-FIELDS.
           PERFORM SPLIT-LINE.
           IF GOOD-LINE
               PERFORM CHECK-ACCOUNT
           END-IF.
           IF GOOD-LINE
               PERFORM CHECK-DATE
           END-IF.
           IF GOOD-LINE
               PERFORM BUILD-TRANSACTION
           END-IF.
           IF BAD-LINE
               PERFORM REFUSE-LINE
           END-IF.
      D    DISPLAY 'BKB010 LINE ' WS-LINES-READ ' ' WS-F-ACCT.
           PERFORM READ-LINE.

       SPLIT-LINE.
           MOVE ZERO TO WS-SEMICOLONS WS-FIELD-COUNT.
           INSPECT BR-LINE TALLYING WS-SEMICOLONS FOR ALL ';'.
           IF WS-SEMICOLONS NOT = 7
               MOVE 'FIELDS MISSING' TO WS-REASON
               SET BAD-LINE TO TRUE
           ELSE
               MOVE 1 TO WS-NEXT
               UNSTRING BR-LINE DELIMITED BY ';'
                   INTO WS-F-BRANCH WS-F-SEQ WS-F-ACCT WS-F-CODE
                        WS-F-AMOUNT WS-F-DATE WS-F-CONTRA WS-F-TEXT
                   WITH POINTER WS-NEXT
                   TALLYING IN WS-FIELD-COUNT
               END-UNSTRING
               INSPECT WS-F-ACCT REPLACING ALL '-' BY SPACE
               INSPECT WS-F-TEXT CONVERTING
                   'abcdefghijklmnopqrstuvwxyz' TO
                   'ABCDEFGHIJKLMNOPQRSTUVWXYZ'
           END-IF.

       CHECK-ACCOUNT.
           MOVE WS-F-ACCT TO CK-ACCT.
           CALL 'BKS100' USING CK-PARAMETERS.
           EVALUATE TRUE
               WHEN CK-GOOD
                   CONTINUE
               WHEN CK-NOT-NUMERIC
                   MOVE 'ACCOUNT NOT NUMERIC' TO WS-REASON
                   SET BAD-LINE TO TRUE
               WHEN CK-WRONG-BRANCH OR CK-WRONG-DIGIT
                   MOVE 'ACCOUNT UNKNOWN' TO WS-REASON
                   SET BAD-LINE TO TRUE
           END-EVALUATE.

       CHECK-DATE.
           IF WS-F-DATE NOT NUMERIC
               MOVE 'DATE NOT NUMERIC' TO WS-REASON
               SET BAD-LINE TO TRUE
           ELSE
               MOVE WS-F-DATE TO DW-SHORT-PARTS
               PERFORM WINDOW-SHORT-DATE
               IF DW-LONG-DATE > WS-TODAY-LONG
                   MOVE 'DATE AFTER TODAY' TO WS-REASON
                   SET BAD-LINE TO TRUE
               END-IF
           END-IF.

       BUILD-TRANSACTION.
           INITIALIZE TR-TRAN-REC.
           MOVE WS-F-BRANCH TO TR-ENTRY-BRANCH.
           MOVE WS-F-SEQ TO TR-ENTRY-SEQ.
           MOVE WS-F-ACCT TO TR-ACCOUNT-NUMBER.
           MOVE WS-F-CODE TO TR-CODE.
           MOVE WS-F-CONTRA TO TR-CONTRA-ACCT.
           MOVE WS-F-TEXT TO TR-NARRATIVE.
           MOVE DW-SHORT-DATE TO TR-DATE.
           UNSTRING WS-F-AMOUNT DELIMITED BY ',' OR SPACE
               INTO WS-WHOLE WS-CENTS.
           INSPECT WS-WHOLE REPLACING LEADING SPACE BY ZERO.
           IF WS-WHOLE-N NOT NUMERIC OR NOT TR-VALID-CODE
               MOVE 'AMOUNT OR CODE' TO WS-REASON
               SET BAD-LINE TO TRUE
           ELSE
               COMPUTE TR-AMOUNT = WS-WHOLE-N + WS-CENTS / 100
               WRITE TR-TRAN-REC
               ADD 1 TO WS-LINES-GOOD
           END-IF.

       REFUSE-LINE.
           MOVE BR-LINE TO RJ-TEXT.
           MOVE WS-REASON TO RJ-REASON.
           WRITE RJ-LINE.
           ADD 1 TO WS-LINES-BAD.

       CLOSE-FILES.
           CLOSE BRANCH-FILE TRAN-FILE REJECT-FILE.
           DISPLAY 'BKB010 READ ' WS-LINES-READ ' GOOD ' WS-LINES-GOOD
               ' BAD ' WS-LINES-BAD.

       COPY BKCWINDW.
