      * COPY MEMBER {CUSTREC}
       01  {CUSTREC}.
           05  CUST-ID                  PIC 9(8).
           05  CUST-NAME                PIC X(30).
           05  CUST-ADDRESS             PIC X(60).
           05  CUST-STATUS              PIC X(1).
           05  CUST-OPEN-DATE           PIC 9(8).
           05  CUST-BALANCE             PIC S9(11)V99 COMP-3.
