      *****************************************************************
      *  BKCPOST   PARAMETERS OF BKS110, POSTING RULE
      *****************************************************************
       01  :TAG:-POSTING.
           05  :TAG:-ACCOUNT             PIC 9(8).
           05  :TAG:-KIND                PIC X(2).
           05  :TAG:-OLD-BALANCE         PIC S9(9)V99 COMP-3.
           05  :TAG:-AMOUNT              PIC S9(9)V99 COMP-3.
           05  :TAG:-LIMIT               PIC S9(7)V99 COMP-3.
           05  :TAG:-NEW-BALANCE         PIC S9(9)V99 COMP-3.
           05  :TAG:-VALUE-DATE          PIC 9(6).
           05  :TAG:-FEE                 PIC S9(5)V99 COMP-3.
           05  :TAG:-RESULT              PIC X.
               88  :TAG:-ACCEPTED        VALUE 'Y'.
               88  :TAG:-REFUSED         VALUE 'N'.
