       IDENTIFICATION DIVISION.
       PROGRAM-ID. {PAYPOST}.
       AUTHOR. KORVANE IT.
      * PAYMENT POSTING - RECORDS PAYMENTS, HANDS OVER TO THE LEDGER
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  WS-GL-PROGRAM                PIC X(8) VALUE 'GLPOST'.
       01  WS-SQLCODE                   PIC S9(9) COMP.
       01  WS-POSTED                    PIC 9(7) COMP-3.
       01  WS-AMOUNT                    PIC S9(11)V99 COMP-3.
       01  WS-ACCT                      PIC X(10).
           COPY {DATEPARM}.
       LINKAGE SECTION.
           COPY {PAYREC}.
       PROCEDURE DIVISION USING {PAYREC}.
       0000-MAIN SECTION.
           PERFORM [>1000-INSERT-PAYMENT]
           PERFORM [>2000-HAND-OVER]
           GOBACK.
       1000-INSERT-PAYMENT.
           MOVE [PAY-NET OF {PAYREC}] TO [WS-AMOUNT]
           MOVE [PAY-ACCT-NO] TO [WS-ACCT]
           EXEC SQL
               INSERT INTO [>PAYMENTS]
                    ([PAYMENTS.PAY_ID], [PAYMENTS.ACCT_NO], [PAYMENTS.AMOUNT])
               VALUES (:[PAY-ID], :[WS-ACCT], :[WS-AMOUNT])
           END-EXEC
           ADD 1 TO [WS-POSTED].
       2000-HAND-OVER.
           CALL [>WS-GL-PROGRAM] USING [&{PAYREC}].
      *@ rules
       END PROGRAM {PAYPOST}.
