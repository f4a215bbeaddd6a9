       IDENTIFICATION DIVISION.
       PROGRAM-ID. {CLAIMREG}.
       AUTHOR. KORVANE IT.
      * CLAIM REGISTRATION - CICS TRANSACTION CL01
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  WS-RESP                      PIC S9(8) COMP.
       01  WS-CLAIM-NO                  PIC 9(10).
       01  CLAIM-RESERVE                PIC S9(11)V99 COMP-3.
       01  WS-DAYS-SINCE-LOSS           PIC S9(5) COMP-3.
       01  CLAIM-AREA.
           05  CA-CLAIM-NO              PIC 9(10).
           05  CA-POLICY-NO             PIC X(12).
           05  CA-LOSS-DATE             PIC 9(8).
           05  CA-AMOUNT                PIC S9(11)V99 COMP-3.
           05  CA-STATUS                PIC X(1).
           05  CA-INSTALMENTS           PIC 9(2).
           COPY {POLREC}.
           COPY {DATEPARM}.
           COPY {ERRFLDS}.
       PROCEDURE DIVISION.
           COPY {ERRHNDL}.
       0000-MAIN SECTION.
           PERFORM [>1000-RECEIVE]
           PERFORM [>2000-REGISTER]
           PERFORM [>8000-SEND]
           EXEC CICS RETURN TRANSID('CL01') END-EXEC.
       1000-RECEIVE.
           EXEC CICS RECEIVE MAP([>'{CLMM1}']) MAPSET('{CLMSET}')
                RESP([WS-RESP]) END-EXEC
           MOVE [WS-CLAIM-NO] TO [CA-CLAIM-NO].
       2000-REGISTER.
           MOVE [CA-POLICY-NO] TO [POL-NUMBER OF {POLREC}]
           CALL [>'{POLICYDB}'] USING [&{POLREC}]
           IF [POL-STATUS OF {POLREC}] NOT = 'A'
               MOVE 'POLICY NOT ACTIVE' TO [ERR-MESSAGE]
               PERFORM [>9900-ABEND-ROUTINE]
           END-IF
           MOVE [CA-LOSS-DATE] TO [DP-DATE-IN]
           MOVE 'AD' TO [DP-FUNCTION]
           CALL [>'{DATEUTIL}'] USING [&DATE-PARMS]
           MOVE [DP-DAYS] TO [WS-DAYS-SINCE-LOSS]
           COMPUTE [CLAIM-RESERVE] ROUNDED = [CA-AMOUNT] * 1.1
           EXEC SQL
               INSERT INTO [>CLAIM]
                    ([CLAIM.CLAIM_NO], [CLAIM.POLICY_NO], [CLAIM.RESERVE])
               VALUES (:[CA-CLAIM-NO], :[CA-POLICY-NO], :[CLAIM-RESERVE])
           END-EXEC
           CALL [>'{CLAIMPAY}'] USING [&CLAIM-AREA] [&CLAIM-RESERVE].
       8000-SEND.
           EXEC CICS SEND MAP([>'{CLMM1}']) MAPSET('{CLMSET}')
                ERASE END-EXEC.
      *@ rules
       END PROGRAM {CLAIMREG}.
