      *****************************************************************
      *  BKCRATE   INTEREST RATES, ASCENDING BY CODE
      *****************************************************************
       01  RT-RATE-AREA.
           05  RT-USED                   PIC S9(4) COMP VALUE ZERO.
           05  RT-ENTRY OCCURS 1 TO 50 TIMES DEPENDING ON RT-USED
                   ASCENDING KEY IS RT-CODE
                   INDEXED BY RT-IX.
               10  RT-CODE               PIC X(2).
               10  RT-PERCENT            PIC S9(3)V9(4) COMP-3.
               10  RT-FROM-DATE          PIC 9(6).
