           05  INNER-A        PIC XXX.
           05  INNER-B REDEFINES INNER-A
                              PIC 9(3).
