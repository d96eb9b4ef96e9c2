      *****************************************************************
      *  BKCDATE   DATE WORK AREA.  YEARS BELOW THE PIVOT ARE 20XX.
      *****************************************************************
       01  DW-DATE-WORK.
           05  DW-SHORT-DATE             PIC 9(6).
           05  DW-SHORT-PARTS REDEFINES DW-SHORT-DATE.
               10  DW-YY                 PIC 99.
               10  DW-MM                 PIC 99.
               10  DW-DD                 PIC 99.
           05  DW-LONG-DATE              PIC 9(8).
           05  DW-LONG-PARTS REDEFINES DW-LONG-DATE.
               10  DW-CENTURY            PIC 99.
               10  DW-LONG-YY            PIC 99.
               10  DW-LONG-MM            PIC 99.
               10  DW-LONG-DD            PIC 99.
           05  DW-YEAR-VIEW REDEFINES DW-LONG-DATE.
               10  DW-YEAR               PIC 9(4).
               10  FILLER                PIC 9(4).
           05  DW-PIVOT                  PIC 99 VALUE 50.
           05  DW-EDITED.
               10  DW-ED-DD              PIC 99.
               10  FILLER                PIC X VALUE '.'.
               10  DW-ED-MM              PIC 99.
               10  FILLER                PIC X VALUE '.'.
               10  DW-ED-YY              PIC 99.
