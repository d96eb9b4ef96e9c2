      *****************************************************************
      *  BKCCOMM   COMMUNICATION AREA OF THE ONLINE PROGRAMS
      *  CHANGE ITS LENGTH HERE AND IN BKO100, WHICH STARTS IT.
      *****************************************************************
           05  :P:-FUNCTION              PIC X.
               88  :P:-INQUIRE           VALUE 'I'.
               88  :P:-AMEND             VALUE 'A'.
           05  :P:-RETURN                PIC 99.
               88  :P:-OK                VALUE 0.
               88  :P:-NOT-FOUND         VALUE 13.
           05  :P:-ACC-KEY               PIC X(8).
           05  :P:-CUST-KEY              PIC 9(7).
           05  :P:-TODAY                 PIC 9(6).
           05  :P:-AVAILABLE             PIC S9(9)V99 COMP-3.
           05  :P:-MESSAGE               PIC X(60).
