      *****************************************************************
      *  BKCCHECK  PARAMETERS OF BKS100, CHECK OF AN ACCOUNT NUMBER
      *****************************************************************
       01  CK-PARAMETERS.
           05  CK-ACCT                   PIC X(8).
           05  CK-REASON                 PIC 9(2).
               88  CK-GOOD               VALUE 0.
               88  CK-NOT-NUMERIC        VALUE 1.
               88  CK-WRONG-BRANCH       VALUE 2.
               88  CK-WRONG-DIGIT        VALUE 3.
