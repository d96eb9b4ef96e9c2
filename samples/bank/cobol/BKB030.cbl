000100 IDENTIFICATION DIVISION.                                         BKB03001
000200 PROGRAM-ID. BKB030.                                              BKB03002
000300 AUTHOR. SAVINGS SECTION, DATA CENTRE.                            BKB03003
000400 DATE-WRITTEN. NOVEMBER 1985.                                     BKB03004
000500***************************************************************** BKB03005
000600*  MONTHLY INTEREST.  RATES COME FROM A SMALL FILE, THE DAYS FROM BKB03006
000700*  BKS120.  AT THE YEAR'S END THE ACCRUED INTEREST IS CREDITED.   BKB03007
000800***************************************************************** BKB03008
000900 ENVIRONMENT DIVISION.                                            BKB03009
001000 CONFIGURATION SECTION.                                           BKB03010
001100 SPECIAL-NAMES.                                                   BKB03011
001200     UPSI-0 ON STATUS IS YEAR-END-RUN                             BKB03012
001300            OFF STATUS IS MONTH-END-RUN.                          BKB03013
001400 INPUT-OUTPUT SECTION.                                            BKB03014
001500 FILE-CONTROL.                                                    BKB03015
001600     SELECT RATE-FILE ASSIGN TO RATES                             BKB03016
001700         ORGANIZATION IS LINE SEQUENTIAL.                         BKB03017
001800     SELECT ACCT-MASTER ASSIGN TO ACCTMST                         BKB03018
001900         ORGANIZATION IS INDEXED                                  BKB03019
002000         ACCESS MODE IS SEQUENTIAL                                BKB03020
002100         RECORD KEY IS IA-ACCT-NO                                 BKB03021
002200         FILE STATUS IS WS-MASTER-STATUS.                         BKB03022
002300 DATA DIVISION.                                                   BKB03023
002400 FILE SECTION.                                                    BKB03024
002500 FD  RATE-FILE.                                                   BKB03025
002600 01  RF-LINE.                                                     BKB03026
002700     05  RF-CODE                   PIC X(2).                      BKB03027
002800     05  RF-PERCENT                PIC 9(3)V9(4).                 BKB03028
002900     05  RF-FROM                   PIC 9(6).                      BKB03029
003000     05  FILLER                    PIC X(5).                      BKB03030
003100 FD  ACCT-MASTER.                                                 BKB03031
003200 COPY BKCACCT REPLACING ==:TAG:== BY ==IA==.                      BKB03032
003300                                                                  BKB03033
003400 WORKING-STORAGE SECTION.                                         BKB03034
003500 77  WS-MASTER-STATUS              PIC XX.                        BKB03035
003600 77  WS-RATE-END                   PIC X VALUE 'N'.               BKB03036
003700 77  WS-MASTER-END                 PIC X VALUE 'N'.               BKB03037
003800 COPY BKCRATE.                                                    BKB03038
003900 01  WS-DATES.                                                    BKB03039
004000     05  WS-LAST-RUN               PIC 9(6).                      BKB03040
004100     05  WS-THIS-RUN               PIC 9(6).                      BKB03041
004200     05  WS-THIS-PARTS REDEFINES WS-THIS-RUN.                     BKB03042
004300         10  WS-THIS-YY            PIC 99.                        BKB03043
004400         10  WS-THIS-MM            PIC 99.                        BKB03044
004500         10  WS-THIS-DD            PIC 99.                        BKB03045
004600     05  WS-FROM-DATE              PIC 9(6).                      BKB03046
004700 01  WS-DAYS                       PIC S9(5) COMP-3.              BKB03047
004800 01  WS-METHOD                     PIC X.                         BKB03048
004900 01  WS-CALC.                                                     BKB03049
005000     05  WS-BASE                   PIC S9(9)V99 COMP-3.           BKB03050
005100     05  WS-INTEREST               PIC S9(9)V9(6) COMP-3.         BKB03051
005200     05  WS-ROUNDED                PIC S9(7)V99 COMP-3.           BKB03052
005300     05  WS-YEAR-DAYS              PIC S9(3) COMP-3.              BKB03053
005400 01  WS-BY-TYPE.                                                  BKB03054
005500     05  WS-TYPE-TOTAL OCCURS 3 TIMES INDEXED BY WS-TX.           BKB03055
005600         10  WS-TYPE-CODE          PIC X.                         BKB03056
005700         10  WS-TYPE-SUM           PIC S9(11)V99 COMP-3.          BKB03057
005800 01  WS-EDIT-TOTAL                 PIC Z(8)9.99-.                 BKB03058
005900 01  WS-HIGHEST-ACCT               PIC 9(8) VALUE ZERO.           BKB03059
006000 01  WS-HIGHEST-AMOUNT             PIC S9(7)V99 COMP-3            BKB03060
006100                                   VALUE ZERO.                    BKB03061
006200                                                                  BKB03062
006300 PROCEDURE DIVISION.                                              BKB03063
006400 MAIN-LINE.                                                       BKB03064
006500     ACCEPT WS-LAST-RUN.                                          BKB03065
006600     ACCEPT WS-THIS-RUN FROM DATE.                                BKB03066
006700     PERFORM LOAD-RATES THRU LOAD-RATES-EXIT.                     BKB03067
006800     MOVE 'C' TO WS-TYPE-CODE(1).                                 BKB03068
006900     MOVE 'S' TO WS-TYPE-CODE(2).                                 BKB03069
007000     MOVE 'L' TO WS-TYPE-CODE(3).                                 BKB03070
007100     PERFORM VARYING WS-TX FROM 1 BY 1 UNTIL WS-TX > 3            BKB03071
007200         MOVE ZERO TO WS-TYPE-SUM(WS-TX)                          BKB03072
007300     END-PERFORM.                                                 BKB03073
007400     OPEN I-O ACCT-MASTER.                                        BKB03074
007500     PERFORM NEXT-ACCOUNT.                                        BKB03075
007600     PERFORM UNTIL WS-MASTER-END = 'Y'                            BKB03076
007700         IF IA-OPEN AND IA-BALANCE NOT = ZERO                     BKB03077
007800             PERFORM ONE-ACCOUNT                                  BKB03078
007900         END-IF                                                   BKB03079
008000         PERFORM NEXT-ACCOUNT                                     BKB03080
008100     END-PERFORM.                                                 BKB03081
008200     CLOSE ACCT-MASTER.                                           BKB03082
008300     PERFORM SHOW-TYPES VARYING WS-TX FROM 1 BY 1                 BKB03083
008400         UNTIL WS-TX > 3.                                         BKB03084
008500     DISPLAY 'BKB030 HIGHEST ' WS-HIGHEST-ACCT.                   BKB03085
008600     STOP RUN.                                                    BKB03086
008700                                                                  BKB03087
008800 LOAD-RATES.                                                      BKB03088
008900     OPEN INPUT RATE-FILE.                                        BKB03089
009000 LOAD-NEXT-RATE.                                                  BKB03090
009100     READ RATE-FILE AT END GO TO LOAD-RATES-CLOSE.                BKB03091
009200     IF RT-USED = 50                                              BKB03092
009300         DISPLAY 'BKB030 TOO MANY RATES'                          BKB03093
009400         GO TO LOAD-RATES-CLOSE.                                  BKB03094
009500     ADD 1 TO RT-USED.                                            BKB03095
009600     MOVE RF-CODE TO RT-CODE(RT-USED).                            BKB03096
009700     MOVE RF-PERCENT TO RT-PERCENT(RT-USED).                      BKB03097
009800     MOVE RF-FROM TO RT-FROM-DATE(RT-USED).                       BKB03098
009900     GO TO LOAD-NEXT-RATE.                                        BKB03099
010000 LOAD-RATES-CLOSE.                                                BKB03000
010100     CLOSE RATE-FILE.                                             BKB03001
010200 LOAD-RATES-EXIT.                                                 BKB03002
010300     EXIT.                                                        BKB03003
010400                                                                  BKB03004
010500 NEXT-ACCOUNT.                                                    BKB03005
010600     READ ACCT-MASTER NEXT RECORD                                 BKB03006
010700         AT END MOVE 'Y' TO WS-MASTER-END                         BKB03007
010800     END-READ.                                                    BKB03008
010900                                                                  BKB03009
011000 ONE-ACCOUNT.                                                     BKB03010
011100     SEARCH ALL RT-ENTRY                                          BKB03011
011200         AT END                                                   BKB03012
011300             DISPLAY 'BKB030 NO RATE ' IA-ACCT-NO ' '             BKB03013
011400                 IA-RATE-CODE                                     BKB03014
011500         WHEN RT-CODE(RT-IX) = IA-RATE-CODE                       BKB03015
011600             PERFORM ACCRUE                                       BKB03016
011700     END-SEARCH.                                                  BKB03017
011800                                                                  BKB03018
011900 ACCRUE.                                                          BKB03019
012000*    AN ACCOUNT OPENED SINCE THE LAST RUN COUNTS FROM ITS OPENING BKB03020
012100     IF IA-OPEN-DATE > WS-LAST-RUN                                BKB03021
012200         MOVE IA-OPEN-DATE TO WS-FROM-DATE                        BKB03022
012300     ELSE                                                         BKB03023
012400         MOVE WS-LAST-RUN TO WS-FROM-DATE                         BKB03024
012500     END-IF.                                                      BKB03025
012600     IF IA-LOAN                                                   BKB03026
012700         MOVE 'T' TO WS-METHOD                                    BKB03027
012800         MOVE 365 TO WS-YEAR-DAYS                                 BKB03028
012900     ELSE                                                         BKB03029
013000         MOVE 'B' TO WS-METHOD                                    BKB03030
013100         MOVE 360 TO WS-YEAR-DAYS                                 BKB03031
013200     END-IF.                                                      BKB03032
013300     CALL 'BKS120' USING WS-FROM-DATE WS-THIS-RUN WS-METHOD       BKB03033
013400                         WS-DAYS.                                 BKB03034
013500     MOVE IA-BALANCE TO WS-BASE.                                  BKB03035
013600     MULTIPLY WS-BASE BY RT-PERCENT(RT-IX) GIVING WS-INTEREST.    BKB03036
013700     COMPUTE WS-INTEREST ROUNDED =                                BKB03037
013800         WS-INTEREST * WS-DAYS / (100 * WS-YEAR-DAYS)             BKB03038
013900         ON SIZE ERROR                                            BKB03039
014000             DISPLAY 'BKB030 SIZE ' IA-ACCT-NO                    BKB03040
014100             MOVE ZERO TO WS-INTEREST                             BKB03041
014200     END-COMPUTE.                                                 BKB03042
014300     ADD WS-INTEREST TO IA-ACCRUED.                               BKB03043
014400     IF YEAR-END-RUN                                              BKB03044
014500         PERFORM CREDIT-INTEREST                                  BKB03045
014600     END-IF.                                                      BKB03046
014700     REWRITE IA-ACCOUNT-REC.                                      BKB03047
014800                                                                  BKB03048
014900 CREDIT-INTEREST.                                                 BKB03049
015000     MOVE IA-ACCRUED TO WS-ROUNDED.                               BKB03050
015100     ADD WS-ROUNDED TO IA-BALANCE.                                BKB03051
015200     SUBTRACT WS-ROUNDED FROM IA-ACCRUED.                         BKB03052
015300     ADD WS-ROUNDED TO IA-MON-CR(WS-THIS-MM).                     BKB03053
015400     SET WS-TX TO 1.                                              BKB03054
015500     SEARCH WS-TYPE-TOTAL VARYING WS-TX                           BKB03055
015600         AT END                                                   BKB03056
015700             DISPLAY 'BKB030 TYPE ' IA-TYPE                       BKB03057
015800         WHEN WS-TYPE-CODE(WS-TX) = IA-TYPE                       BKB03058
015900             ADD WS-ROUNDED TO WS-TYPE-SUM(WS-TX)                 BKB03059
016000     END-SEARCH.                                                  BKB03060
016100     IF WS-ROUNDED > WS-HIGHEST-AMOUNT                            BKB03061
016200         MOVE WS-ROUNDED TO WS-HIGHEST-AMOUNT                     BKB03062
016300         MOVE IA-ACCT-NO TO WS-HIGHEST-ACCT                       BKB03063
016400     END-IF.                                                      BKB03064
016500                                                                  BKB03065
016600 SHOW-TYPES.                                                      BKB03066
016700     MOVE WS-TYPE-SUM(WS-TX) TO WS-EDIT-TOTAL.                    BKB03067
016800     DISPLAY 'BKB030 TYPE ' WS-TYPE-CODE(WS-TX) ' '               BKB03068
016900         WS-EDIT-TOTAL.                                           BKB03069
