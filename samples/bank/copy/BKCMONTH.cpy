      *****************************************************************
      *  BKCMONTH  MONTH NAMES AND THE DAYS BEFORE EACH MONTH
      *****************************************************************
       01  MT-MONTH-NAMES.
           05  FILLER                    PIC X(12) VALUE 'JANUARY  000'.
           05  FILLER                    PIC X(12) VALUE 'FEBRUARY 031'.
           05  FILLER                    PIC X(12) VALUE 'MARCH    059'.
           05  FILLER                    PIC X(12) VALUE 'APRIL    090'.
           05  FILLER                    PIC X(12) VALUE 'MAY      120'.
           05  FILLER                    PIC X(12) VALUE 'JUNE     151'.
           05  FILLER                    PIC X(12) VALUE 'JULY     181'.
           05  FILLER                    PIC X(12) VALUE 'AUGUST   212'.
           05  FILLER                    PIC X(12) VALUE 'SEPTEMBER243'.
           05  FILLER                    PIC X(12) VALUE 'OCTOBER  273'.
           05  FILLER                    PIC X(12) VALUE 'NOVEMBER 304'.
           05  FILLER                    PIC X(12) VALUE 'DECEMBER 334'.
       01  MT-MONTH-TABLE REDEFINES MT-MONTH-NAMES.
           05  MT-MONTH OCCURS 12 TIMES INDEXED BY MT-IX.
               10  MT-NAME               PIC X(9).
               10  MT-DAYS-BEFORE        PIC 9(3).
