      * A record with names made by replacing.
       01  :T:-REC.
           05  :T:-NAME       PIC X(9).
           05  :T:-LIST OCCURS 3.
               10  :T:-NUM    PIC S9(4) COMP.
                   88 :T:-NUM-ZERO VALUE 0.
           05  (T)-MARK       PIC X.
