      *****************************************************************
      *  BKCACCT   ACCOUNT MASTER RECORD
      *  KEY IS THE ACCOUNT NUMBER: BRANCH 2, SERIAL 5, CHECK DIGIT 1.
      *  MONTH TOTALS ARE OF THE RUNNING CALENDAR YEAR.
      *****************************************************************
       01  :TAG:-ACCOUNT-REC.
           05  :TAG:-ACCT-NO             PIC 9(8).
           05  :TAG:-ACCT-PARTS REDEFINES :TAG:-ACCT-NO.
               10  :TAG:-BRANCH          PIC 9(2).
               10  :TAG:-SERIAL          PIC 9(5).
               10  :TAG:-CHECK           PIC 9(1).
           05  :TAG:-OWNER               PIC 9(7).
           05  :TAG:-TYPE                PIC X.
               88  :TAG:-CURRENT         VALUE 'C'.
               88  :TAG:-SAVINGS         VALUE 'S'.
               88  :TAG:-LOAN            VALUE 'L'.
           05  :TAG:-STATE               PIC X.
               88  :TAG:-OPEN            VALUE 'O'.
               88  :TAG:-DORMANT         VALUE 'D'.
               88  :TAG:-CLOSED          VALUE 'X'.
           05  :TAG:-RATE-CODE           PIC X(2).
           05  :TAG:-BALANCE             PIC S9(9)V99   COMP-3.
           05  :TAG:-LIMIT               PIC S9(7)V99   COMP-3.
           05  :TAG:-ACCRUED             PIC S9(7)V9(4) COMP-3.
           05  :TAG:-OPEN-DATE           PIC 9(6).
           05  :TAG:-OPEN-PARTS REDEFINES :TAG:-OPEN-DATE.
               10  :TAG:-OPEN-YY         PIC 99.
               10  :TAG:-OPEN-MM         PIC 99.
               10  :TAG:-OPEN-DD         PIC 99.
           05  :TAG:-LAST-DATE           PIC 9(6).
           05  :TAG:-MOVEMENTS           PIC S9(5)      COMP.
           05  :TAG:-MONTHS.
               10  :TAG:-MONTH OCCURS 12 TIMES.
                   15  :TAG:-MON-DR      PIC S9(9)V99   COMP-3.
                   15  :TAG:-MON-CR      PIC S9(9)V99   COMP-3.
           05  FILLER                    PIC X(20).
