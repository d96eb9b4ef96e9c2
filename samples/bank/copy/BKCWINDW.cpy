      *----------------------------------------------------------------
      *  BKCWINDW  PARAGRAPH: GIVE A SHORT DATE ITS CENTURY.
      *  COPY INTO THE PROCEDURE DIVISION; NEEDS BKCDATE.
      *----------------------------------------------------------------
       WINDOW-SHORT-DATE.
           IF DW-YY < DW-PIVOT
               MOVE 20 TO DW-CENTURY
           ELSE
               MOVE 19 TO DW-CENTURY
           END-IF.
           MOVE DW-YY TO DW-LONG-YY.
           MOVE DW-MM TO DW-LONG-MM.
           MOVE DW-DD TO DW-LONG-DD.
