       01  NESTED-GROUP.
           COPY INNERCPY.
           05  AFTER-INNER    PIC X(3).
