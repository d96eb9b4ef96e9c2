000100 IDENTIFICATION DIVISION.                                         TAG00001
000200 PROGRAM-ID. COPYING.                                             TAG00002
000300 ENVIRONMENT DIVISION.                                            TAG00003
000400 CONFIGURATION SECTION.                                           TAG00004
000500 SOURCE-COMPUTER. IBM-370 WITH DEBUGGING MODE.                    TAG00005
000600 DATA DIVISION.                                                   TAG00006
000700 WORKING-STORAGE SECTION.                                         TAG00007
000800     COPY REC REPLACING ==:T:== BY ==ONE== ==(T)== BY ==ONE==.    TAG00008
000900     COPY REC REPLACING ==:T:== BY ==TWO==                        TAG00009
001000                        ==(T)== BY ==TWO==.                       TAG00010
001100 COPY OUTERCPY REPLACING XXX BY XXXX.                             TAG00011
001200 01  A-NAME-CONTINUED-                                            TAG00012
001300-    OVER-LINES PIC X(5).                                         TAG00013
001400 01  LONG-LITERAL PIC X(90) VALUE 'A literal that runs on to the eTAG00014
001500-    'nd of the next'.                                            TAG00015
001600 01  EDITED PIC ZZ9.99.                                           TAG00016
001700 01  MY-ITEM PIC X(4). 01  SAME-LINE PIC X(4).                    TAG00017
001800 01  THEIR-ITEM PIC X(4).                                         TAG00018
001900 01  SCATTERED                                                    TAG00019
002000             PIC                                                  TAG00020
002100                 X(3)                                             TAG00021
002200             .                                                    TAG00022
002300 PROCEDURE DIVISION.                                              TAG00023
002400 P1.                                                              TAG00024
002500     COPY MOVES REPLACING SRC-ITEM BY MY-ITEM                     TAG00025
002600         ==DST-ITEM== BY ==THEIR-ITEM==.                          TAG00026
002700     MOVE ONE-NAME TO TWO-NAME.  MOVE ONE-NAME TO LONG-LITERAL.   TAG00027
002800D    DISPLAY SAME-LINE.                                           TAG00028
002900     MOVE A-NAME-CONTI                                            TAG00029
003000-         NUED-OVER-LINES TO SAME-LINE.                           TAG00030
003100     MOVE 'SAME-LINE ' TO MY-ITEM. *> THEIR-ITEM                  TAG00031
003200     MOVE ONE-NUM (1), TO, TWO-NUM (2); MOVE 1.5 TO EDITED.       TAG00032
003300     IF ONE-NUM-ZERO (2) MOVE 'IT''S' TO TWO-MARK.                TAG00033
003400     MOVE "CONTINUED AND QUOTED: SAME-LINE AND THE REST OF IT HAS TAG00034
003500-    "TO FOLLOW" TO LONG-LITERAL.                                 TAG00035
003600 REPLACE ==STANDS-FOR== BY ==SCATTERED== ==GOBK== BY ==GOBACK==.   TAG00036
003700     MOVE STANDS-FOR TO SAME-LINE.                                TAG00037
003800     GOBK.                                                        TAG00038
