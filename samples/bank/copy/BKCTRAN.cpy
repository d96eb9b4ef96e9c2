      *****************************************************************
      *  BKCTRAN   TRANSACTION RECORD, ONE MOVEMENT ON ONE ACCOUNT
      *****************************************************************
       01  :TAG:-TRAN-REC.
           05  :TAG:-TRAN-ID.
               10  :TAG:-ENTRY-BRANCH    PIC 9(2).
               10  :TAG:-ENTRY-SEQ       PIC 9(6).
           05  :TAG:-ACCOUNT-NUMBER      PIC 9(8).
           05  :TAG:-CODE                PIC X(2).
               88  :TAG:-DEPOSIT         VALUE 'DP'.
               88  :TAG:-WITHDRAWAL      VALUE 'WD'.
               88  :TAG:-TRANSFER        VALUE 'TF'.
               88  :TAG:-CHARGE          VALUE 'CH' 'IN'.
               88  :TAG:-VALID-CODE      VALUE 'DP' 'WD' 'TF'
                                               'CH' 'IN'.
           05  :TAG:-AMOUNT              PIC S9(9)V99   COMP-3.
           05  :TAG:-DATE                PIC 9(6).
           05  :TAG:-DATE-PARTS REDEFINES :TAG:-DATE.
               10  :TAG:-YY              PIC 99.
               10  :TAG:-MM              PIC 99.
               10  :TAG:-DD              PIC 99.
           05  :TAG:-CONTRA-ACCT         PIC X(8).
           05  :TAG:-NARRATIVE           PIC X(24).
           05  FILLER                    PIC X(18).
