      *****************************************************************
      *  BKCCUST   CUSTOMER MASTER RECORD, 330 BYTES
      *  COPY WITH REPLACING ==:TAG:== BY THE PREFIX OF YOUR PROGRAM.
      *  ONE CUSTOMER HOLDS AT MOST EIGHT ACCOUNTS.
      *****************************************************************
       01  :TAG:-CUSTOMER-REC.
           05  :TAG:-CUST-NO             PIC 9(7).
           05  :TAG:-NAME.
               10  :TAG:-TITLE           PIC X(4).
               10  :TAG:-FORENAMES       PIC X(25).
               10  :TAG:-SURNAME         PIC X(25).
           05  :TAG:-ADDRESS.
               10  :TAG:-ADDR-LINE       PIC X(30) OCCURS 4 TIMES.
               10  :TAG:-POSTCODE        PIC X(8).
           05  :TAG:-BIRTH-DATE          PIC 9(6).
           05  :TAG:-BIRTH-PARTS REDEFINES :TAG:-BIRTH-DATE.
               10  :TAG:-BIRTH-YY        PIC 99.
               10  :TAG:-BIRTH-MM        PIC 99.
               10  :TAG:-BIRTH-DD        PIC 99.
           05  :TAG:-SINCE               PIC 9(6).
           05  :TAG:-SINCE-PARTS REDEFINES :TAG:-SINCE.
               10  :TAG:-SINCE-YY        PIC 99.
               10  :TAG:-SINCE-MM        PIC 99.
               10  :TAG:-SINCE-DD        PIC 99.
           05  :TAG:-STATUS              PIC X.
               88  :TAG:-ACTIVE          VALUE 'A'.
               88  :TAG:-DECEASED        VALUE 'D'.
               88  :TAG:-BLOCKED         VALUES 'B' 'F'.
           05  :TAG:-ACCT-COUNT          PIC 99.
           05  :TAG:-ACCT-LIST.
               10  :TAG:-ACCT-ENTRY      PIC 9(8) OCCURS 8 TIMES.
           05  FILLER                    PIC X(62).
