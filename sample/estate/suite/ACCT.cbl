       IDENTIFICATION DIVISION.
       PROGRAM-ID. {ACCT}.
       AUTHOR. KORVANE IT.
      * ACCOUNT ACCESS MODULE - CALLED BY CUSTMAINT AND ACCTUPD
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  WS-ACCT-NO                   PIC X(10).
       01  WS-ACCT-TYPE                 PIC X(2).
       01  WS-BALANCE                   PIC S9(11)V99 COMP-3.
       01  WS-SQLCODE                   PIC S9(9) COMP.
           EXEC SQL INCLUDE SQLCA END-EXEC.
       LINKAGE SECTION.
           COPY {CUSTREC}.
       PROCEDURE DIVISION USING {CUSTREC}.
       0000-MAIN SECTION.
           MOVE [CUST-ID OF {CUSTREC}] TO [WS-ACCT-NO]
           PERFORM [>1000-READ-ACCOUNT]
           IF [CUST-STATUS OF {CUSTREC}] = 'A'
               PERFORM [>2000-UPDATE-BALANCE]
           END-IF
           GOBACK.
       1000-READ-ACCOUNT.
           EXEC SQL
               SELECT [ACCOUNTS.BALANCE], [ACCOUNTS.ACCT_TYPE]
                 INTO :[WS-BALANCE], :[WS-ACCT-TYPE]
                 FROM [>ACCOUNTS]
                WHERE [ACCOUNTS.ACCT_NO] = :[WS-ACCT-NO]
           END-EXEC
           MOVE [WS-BALANCE] TO [CUST-BALANCE OF {CUSTREC}].
       2000-UPDATE-BALANCE.
           ADD [ACCT-INTEREST] TO [WS-BALANCE]
           IF [WS-BALANCE] > [ACCT-LIMIT]
               MOVE [ACCT-LIMIT] TO [WS-BALANCE]
           END-IF
           EXEC SQL UPDATE [>ACCOUNTS]
               SET [ACCOUNTS.BALANCE] = :[WS-BALANCE]
               WHERE [ACCOUNTS.ACCT_NO] = :[WS-ACCT-NO]
           END-EXEC.
      *@ rules
       END PROGRAM {ACCT}.
