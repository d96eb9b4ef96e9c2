       IDENTIFICATION DIVISION.
       PROGRAM-ID. SYNCED.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  R1.
           05  R1-A PIC X(5).
           05  R1-B OCCURS 4.
               10  R1-C PIC X.
               10  R1-D PIC S9(6) COMP SYNC.
               10  R1-E PIC X(2).
           05  R1-F PIC X.
       01  R2.
           05  R2-A PIC X.
           05  R2-B PIC S9(12) COMP SYNC.
           05  R2-C PIC X.
           05  R2-D COMP-1 SYNC.
           05  R2-E PIC X.
           05  R2-F REDEFINES R2-E PIC 9.
       01  R3.
           05  R3-A PIC X(3).
           05  R3-B.
               10  R3-C PIC X.
               10  R3-D PIC S9(4) COMP SYNC.
           05  R3-E REDEFINES R3-B.
               10  R3-F PIC X(3).
           05  R3-G PIC X.
       01  R4.
           05  R4-N PIC 9(2).
           05  R4-T OCCURS 5 TO 10 TIMES DEPENDING ON R4-N.
               10  R4-A PIC X(3).
               10  R4-B OCCURS 3.
                   15  R4-C PIC S9(5) COMP-3.
                   15  R4-D PIC X OCCURS 2.
       01  R5.
           05  R5-A.
               10  R5-B PIC X(10).
               10  R5-C REDEFINES R5-B.
                   15  R5-D PIC X(4).
                   15  R5-E PIC X(8).
               10  R5-F PIC X.
           05  R5-G REDEFINES R5-A PIC X(3).
           05  R5-H PIC X.
           66  R5-I RENAMES R5-B THRU R5-F.
           66  R5-J RENAMES R5-A THRU R5-H.
       01  R6 REDEFINES R5 PIC X(40).
       01  R7 REDEFINES R5.
           05  R7-A PIC X(20) OCCURS 3.
       77  R8 PIC 9 COMP.
       77  R9 REDEFINES R8 PIC XX.
       PROCEDURE DIVISION.
           MOVE R7-A (2) TO R1.
           MOVE R5-I TO R5-J.
           STOP RUN.
