      *****************************************************************
      *  BKDACCT   HOST VARIABLES OF TABLE BK_ACCOUNT
      *****************************************************************
           EXEC SQL DECLARE BK_ACCOUNT TABLE
             ( ACCOUNT_NO      CHAR(8)        NOT NULL,
               OWNER_NO        INTEGER        NOT NULL,
               BALANCE         DECIMAL(11,2)  NOT NULL,
               LAST_MOVED      CHAR(6)        NOT NULL,
               REMARK          VARCHAR(40) )
           END-EXEC.
       01  DCL-BK-ACCOUNT.
           10  HV-ACCOUNT-NO             PIC X(8).
           10  HV-OWNER-NO               PIC S9(9) COMP.
           10  HV-BALANCE                PIC S9(9)V9(2) COMP-3.
           10  HV-LAST-MOVED             PIC X(6).
           10  HV-REMARK.
               49  HV-REMARK-LEN         PIC S9(4) COMP.
               49  HV-REMARK-TEXT        PIC X(40).
