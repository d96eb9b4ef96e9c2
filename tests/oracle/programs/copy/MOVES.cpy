      * Statements that are copied.
           MOVE SRC-ITEM TO INNER-A
           MOVE
      * a remark in between
               SRC-ITEM (1:2)
             TO DST-ITEM
           .
           IF INNER-B = 5 DISPLAY SRC-ITEM.
