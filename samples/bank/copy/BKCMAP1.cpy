      *****************************************************************
      *  BKCMAP1   SYMBOLIC MAP BKMAP1, ACCOUNT INQUIRY SCREEN
      *****************************************************************
       01  BKMAP1I.
           05  FILLER                    PIC X(12).
           05  ACCNOL                    PIC S9(4) COMP.
           05  ACCNOF                    PIC X.
           05  FILLER REDEFINES ACCNOF.
               10  ACCNOA                PIC X.
           05  ACCNOI                    PIC X(8).
           05  NAMEL                     PIC S9(4) COMP.
           05  NAMEF                     PIC X.
           05  FILLER REDEFINES NAMEF.
               10  NAMEA                 PIC X.
           05  NAMEI                     PIC X(40).
           05  BALL                      PIC S9(4) COMP.
           05  BALF                      PIC X.
           05  FILLER REDEFINES BALF.
               10  BALA                  PIC X.
           05  BALI                      PIC X(14).
           05  LASTL                     PIC S9(4) COMP.
           05  LASTF                     PIC X.
           05  FILLER REDEFINES LASTF.
               10  LASTA                 PIC X.
           05  LASTI                     PIC X(8).
           05  MSGL                      PIC S9(4) COMP.
           05  MSGF                      PIC X.
           05  FILLER REDEFINES MSGF.
               10  MSGA                  PIC X.
           05  MSGI                      PIC X(60).
       01  BKMAP1O REDEFINES BKMAP1I.
           05  FILLER                    PIC X(12).
           05  FILLER                    PIC X(3).
           05  ACCNOO                    PIC X(8).
           05  FILLER                    PIC X(3).
           05  NAMEO                     PIC X(40).
           05  FILLER                    PIC X(3).
           05  BALO                      PIC ---,---,--9.99.
           05  FILLER                    PIC X(3).
           05  LASTO                     PIC X(8).
           05  FILLER                    PIC X(3).
           05  MSGO                      PIC X(60).
